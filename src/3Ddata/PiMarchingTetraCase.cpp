#include "3Ddata/PiMarchingTetraCase.h"

const int PiMarchingTetraCase::s_edges[6][2] = {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}};
const int PiMarchingTetraCase::s_facets[4][4] = {
    {0, 1, 2, -1}, {0, 2, 3, -1}, {0, 3, 1, -1}, {1, 3, 2, -1}};

namespace {

const int s_turnX[4] = {1, 2, 0, 3};
const int s_turnY[4] = {0, 2, 3, 1};
const int s_turnZ[4] = {1, 0, 3, 2};
const PiMarchingCase::Geometry s_geometry = {4,
                                             6,
                                             4,
                                             PiMarchingTetraCase::s_edges,
                                             PiMarchingTetraCase::s_facets,
                                             {s_turnX, s_turnY, s_turnZ}};

} // namespace

PiMarchingTetraCase::PiMarchingTetraCase(unsigned char baseNumber, unsigned char id)
    : PiMarchingCase(s_geometry, baseNumber, id) {}
