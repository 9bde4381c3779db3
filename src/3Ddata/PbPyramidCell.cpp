#include <Quillon/3Ddata/PbPyramidCell.h>

#include "3Ddata/PiMarchingCaseTable.h"
#include "3Ddata/PiMarchingPyraCase.h"

namespace {

const float s_reference[5][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}};

const PbCell::Shape s_shape = {
    5, 8, 5, PiMarchingPyraCase::s_edges, PiMarchingPyraCase::s_facets, s_reference};

// Base cases: the apex below the level and none, one, two neighbouring, two
// opposite, three or four base nodes above it.
PiMarchingCaseTable& table() {
    static PiMarchingCaseTable s_table(
        5, "PbPyramidCell::addMC ",
        [](unsigned char base, unsigned char id) -> std::unique_ptr<PiMarchingCase> {
            return std::make_unique<PiMarchingPyraCase>(base, id);
        },
        {{0, {}, {}},
         {1, {0, 4, 3}, {}},
         {3, {1, 5, 3, 4}, {}},
         {5, {0, 4, 3, -1, 1, 2, 6}, {0, 2, 4, 3}},
         {7, {2, 6, 3, 5, 4}, {}},
         {15, {4, 7, 5, 6}, {}}});
    return s_table;
}

} // namespace

PbPyramidCell::PbPyramidCell(const PbMesh* owner) : PbVolumeCell(s_shape, owner) {}

int PbPyramidCell::init() {
    return table().init();
}

void PbPyramidCell::finish() {
    table().finish();
}

int PbPyramidCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    return locateByNewton(point, tolerance, pcoord);
}

void PbPyramidCell::getWeight(const SbVec3f& pcoord, float* weights) const {
    float r = pcoord[0], s = pcoord[1], t = pcoord[2];
    weights[0] = (1.0f - r) * (1.0f - s) * (1.0f - t);
    weights[1] = r * (1.0f - s) * (1.0f - t);
    weights[2] = r * s * (1.0f - t);
    weights[3] = (1.0f - r) * s * (1.0f - t);
    weights[4] = t;
}

void PbPyramidCell::getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const {
    float r = pcoord[0], s = pcoord[1], t = pcoord[2];
    dr[0] = -(1.0f - s) * (1.0f - t);
    dr[1] = (1.0f - s) * (1.0f - t);
    dr[2] = s * (1.0f - t);
    dr[3] = -s * (1.0f - t);
    dr[4] = 0.0f;
    ds[0] = -(1.0f - r) * (1.0f - t);
    ds[1] = -r * (1.0f - t);
    ds[2] = r * (1.0f - t);
    ds[3] = (1.0f - r) * (1.0f - t);
    ds[4] = 0.0f;
    dt[0] = -(1.0f - r) * (1.0f - s);
    dt[1] = -r * (1.0f - s);
    dt[2] = -r * s;
    dt[3] = -(1.0f - r) * s;
    dt[4] = 1.0f;
}

int PbPyramidCell::getOrdering() const {
    return orderingOf(1, 3, 4);
}

PiMarchingCaseTable& PbPyramidCell::caseTable() const {
    return table();
}
