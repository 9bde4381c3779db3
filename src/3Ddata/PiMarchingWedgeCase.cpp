#include "3Ddata/PiMarchingWedgeCase.h"

const int PiMarchingWedgeCase::s_edges[9][2] = {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5},
                                                {5, 3}, {0, 3}, {1, 4}, {2, 5}};
const int PiMarchingWedgeCase::s_facets[5][4] = {
    {0, 1, 2, -1}, {3, 5, 4, -1}, {0, 2, 5, 3}, {1, 4, 5, 2}, {0, 3, 4, 1}};

namespace {

const int s_turnX[6] = {3, 5, 4, 0, 2, 1};
const int s_turnZ[6] = {1, 2, 0, 4, 5, 3};
const PiMarchingCase::Geometry s_geometry = {6,
                                             9,
                                             5,
                                             PiMarchingWedgeCase::s_edges,
                                             PiMarchingWedgeCase::s_facets,
                                             {s_turnX, nullptr, s_turnZ}};

} // namespace

PiMarchingWedgeCase::PiMarchingWedgeCase(unsigned char baseNumber, unsigned char id)
    : PiMarchingCase(s_geometry, baseNumber, id) {}
