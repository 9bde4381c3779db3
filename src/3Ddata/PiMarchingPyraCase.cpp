#include "3Ddata/PiMarchingPyraCase.h"

const int PiMarchingPyraCase::s_edges[8][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0},
                                               {0, 4}, {1, 4}, {2, 4}, {3, 4}};

namespace {

const int s_turnZ[5] = {1, 2, 3, 0, 4};
const PiMarchingCase::Geometry s_geometry = {
    5, 8, PiMarchingPyraCase::s_edges, {nullptr, nullptr, s_turnZ}};

} // namespace

PiMarchingPyraCase::PiMarchingPyraCase(unsigned char baseNumber, unsigned char id)
    : PiMarchingCase(s_geometry, baseNumber, id) {}
