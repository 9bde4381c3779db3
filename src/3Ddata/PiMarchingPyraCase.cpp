#include "3Ddata/PiMarchingPyraCase.h"

const int PiMarchingPyraCase::s_edges[8][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0},
                                               {0, 4}, {1, 4}, {2, 4}, {3, 4}};
const int PiMarchingPyraCase::s_facets[5][4] = {
    {0, 1, 2, 3}, {0, 4, 1, -1}, {1, 4, 2, -1}, {2, 4, 3, -1}, {3, 4, 0, -1}};

namespace {

const int s_turnZ[5] = {1, 2, 3, 0, 4};
const PiMarchingCase::Geometry s_geometry = {5,
                                             8,
                                             5,
                                             PiMarchingPyraCase::s_edges,
                                             PiMarchingPyraCase::s_facets,
                                             {nullptr, nullptr, s_turnZ}};

} // namespace

PiMarchingPyraCase::PiMarchingPyraCase(unsigned char baseNumber, unsigned char id)
    : PiMarchingCase(s_geometry, baseNumber, id) {}
