#include "3Ddata/PiMarchingCubeCase.h"

const int PiMarchingCubeCase::s_edges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                                {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
const int PiMarchingCubeCase::s_facets[6][4] = {{0, 3, 7, 4}, {1, 5, 6, 2}, {0, 4, 5, 1},
                                                {3, 2, 6, 7}, {0, 1, 2, 3}, {4, 7, 6, 5}};

namespace {

const int s_turnX[8] = {4, 0, 3, 7, 5, 1, 2, 6};
const int s_turnY[8] = {3, 2, 6, 7, 0, 1, 5, 4};
const int s_turnZ[8] = {3, 0, 1, 2, 7, 4, 5, 6};
const PiMarchingCase::Geometry s_geometry = {8,
                                             12,
                                             6,
                                             PiMarchingCubeCase::s_edges,
                                             PiMarchingCubeCase::s_facets,
                                             {s_turnX, s_turnY, s_turnZ}};

} // namespace

PiMarchingCubeCase::PiMarchingCubeCase(unsigned char baseNumber, unsigned char id)
    : PiMarchingCase(s_geometry, baseNumber, id) {}
