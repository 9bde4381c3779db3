#include <Quillon/3Ddata/PbWedgeCell.h>

#include "3Ddata/PiMarchingCaseTable.h"
#include "3Ddata/PiMarchingWedgeCase.h"

namespace {

const float s_reference[6][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};

const PbCell::Shape s_shape = {
    5, 9, 6, PiMarchingWedgeCase::s_edges, PiMarchingWedgeCase::s_facets, s_reference};

// One base case per class of node classifications under the wedge's turns
// and complements, each the class's lowest id.
PiMarchingCaseTable& table() {
    static PiMarchingCaseTable s_table(
        6, "PbWedgeCell::addMC ",
        [](unsigned char base, unsigned char id) -> std::unique_ptr<PiMarchingCase> {
            return std::make_unique<PiMarchingWedgeCase>(base, id);
        },
        {{0, {}, {}},
         {1, {0, 6, 2}, {}},
         {3, {1, 7, 2, 6}, {}},
         {7, {6, 8, 7}, {}},
         {9, {0, 3, 2, 5}, {}},
         {10, {0, 1, 7, -1, 3, 5, 6}, {5, 0, 2, 3}},
         {11, {1, 7, 2, 3, 5}, {}},
         {12, {1, 2, 8, -1, 3, 5, 6}, {1, 5, 4, 2}},
         {13, {0, 3, 1, 5, 8}, {}},
         {14, {0, 2, 7, 8, -1, 3, 5, 6}, {1, 6, 5, 3, -1, 6, 0, 2, 4}}});
    return s_table;
}

} // namespace

PbWedgeCell::PbWedgeCell(const PbMesh* owner) : PbVolumeCell(s_shape, owner) {}

int PbWedgeCell::init() {
    return table().init();
}

void PbWedgeCell::finish() {
    table().finish();
}

int PbWedgeCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    return locateByNewton(point, tolerance, pcoord) &&
           isInRange(1.0f - pcoord[0] - pcoord[1], tolerance);
}

void PbWedgeCell::getWeight(const SbVec3f& pcoord, float* weights) const {
    float r = pcoord[0], s = pcoord[1], t = pcoord[2];
    weights[0] = (1.0f - r - s) * (1.0f - t);
    weights[1] = r * (1.0f - t);
    weights[2] = s * (1.0f - t);
    weights[3] = (1.0f - r - s) * t;
    weights[4] = r * t;
    weights[5] = s * t;
}

void PbWedgeCell::getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const {
    float r = pcoord[0], s = pcoord[1], t = pcoord[2];
    dr[0] = -(1.0f - t);
    dr[1] = 1.0f - t;
    dr[2] = 0.0f;
    dr[3] = -t;
    dr[4] = t;
    dr[5] = 0.0f;
    ds[0] = -(1.0f - t);
    ds[1] = 0.0f;
    ds[2] = 1.0f - t;
    ds[3] = -t;
    ds[4] = 0.0f;
    ds[5] = t;
    dt[0] = -(1.0f - r - s);
    dt[1] = -r;
    dt[2] = -s;
    dt[3] = 1.0f - r - s;
    dt[4] = r;
    dt[5] = s;
}

int PbWedgeCell::getOrdering() const {
    return orderingOf(1, 2, 3);
}

PiMarchingCaseTable& PbWedgeCell::caseTable() const {
    return table();
}
