#include <Quillon/3Ddata/PbHexahedronCell.h>

#include "3Ddata/PiMarchingCaseTable.h"
#include "3Ddata/PiMarchingCubeCase.h"

namespace {

const float s_reference[8][3] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                                 {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};

const PbCell::Shape s_shape = {
    6, 12, 8, PiMarchingCubeCase::s_edges, PiMarchingCubeCase::s_facets, s_reference};

PiMarchingCaseTable& table() {
    static PiMarchingCaseTable s_table(
        8, "",
        [](unsigned char base, unsigned char id) -> std::unique_ptr<PiMarchingCase> {
            return std::make_unique<PiMarchingCubeCase>(base, id);
        },
        {{0, {}, {}},
         {1, {0, 8, 3}, {}},
         {9, {11, 2, 8, 0}, {}},
         {5, {0, 8, 3, -1, 1, 2, 10}, {0, 2, 4, 3}},
         {65, {0, 8, 3, -1, 5, 10, 6}, {}},
         {152, {3, 8, 2, 4, 6}, {}},
         {73, {11, 2, 8, 0, -1, 5, 10, 6}, {6, 5, 1, 0}},
         {74, {2, 3, 11, -1, 1, 9, 0, -1, 5, 10, 6}, {5, 1, 0, 3, -1, 3, 7, 6, 4, -1, 0, 2, 8, 7}},
         {153, {4, 6, 0, 2}, {}},
         {177, {11, 3, 6, 0, 5, 9}, {}},
         {195, {1, 9, 3, 8, -1, 5, 10, 7, 11}, {2, 3, 6, 7, -1, 0, 5, 4, 1}},
         {209, {11, 3, 10, 0, 5, 4}, {}},
         {154, {1, 9, 0, -1, 3, 8, 2, 4, 6}, {2, 1, 6, 4}},
         {165,
          {0, 8, 3, -1, 1, 2, 10, -1, 9, 5, 4, -1, 6, 11, 7},
          {0, 2, 4, 3, -1, 0, 6,  8, 1, -1, 2, 1, 11, 10, -1,
           3, 5, 7, 6, -1, 4, 10, 9, 5, -1, 8, 7, 9,  11}},
         {184, {2, 3, 6, 8, 5, 9}, {}}});
    return s_table;
}

} // namespace

PbHexahedronCell::PbHexahedronCell(const PbMesh* owner) : PbVolumeCell(s_shape, owner) {}

int PbHexahedronCell::init() {
    return table().init();
}

void PbHexahedronCell::finish() {
    table().finish();
}

int PbHexahedronCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    return locateByNewton(point, tolerance, pcoord);
}

void PbHexahedronCell::getWeight(const SbVec3f& pcoord, float* weights) const {
    float r = pcoord[0], s = pcoord[1], t = pcoord[2];
    weights[0] = (1.0f - r) * (1.0f - s) * (1.0f - t);
    weights[1] = r * (1.0f - s) * (1.0f - t);
    weights[2] = r * s * (1.0f - t);
    weights[3] = (1.0f - r) * s * (1.0f - t);
    weights[4] = (1.0f - r) * (1.0f - s) * t;
    weights[5] = r * (1.0f - s) * t;
    weights[6] = r * s * t;
    weights[7] = (1.0f - r) * s * t;
}

void PbHexahedronCell::getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const {
    float r = pcoord[0], s = pcoord[1], t = pcoord[2];
    dr[0] = -(1.0f - s) * (1.0f - t);
    dr[1] = (1.0f - s) * (1.0f - t);
    dr[2] = s * (1.0f - t);
    dr[3] = -s * (1.0f - t);
    dr[4] = -(1.0f - s) * t;
    dr[5] = (1.0f - s) * t;
    dr[6] = s * t;
    dr[7] = -s * t;
    ds[0] = -(1.0f - r) * (1.0f - t);
    ds[1] = -r * (1.0f - t);
    ds[2] = r * (1.0f - t);
    ds[3] = (1.0f - r) * (1.0f - t);
    ds[4] = -(1.0f - r) * t;
    ds[5] = -r * t;
    ds[6] = r * t;
    ds[7] = (1.0f - r) * t;
    dt[0] = -(1.0f - r) * (1.0f - s);
    dt[1] = -r * (1.0f - s);
    dt[2] = -r * s;
    dt[3] = -(1.0f - r) * s;
    dt[4] = (1.0f - r) * (1.0f - s);
    dt[5] = r * (1.0f - s);
    dt[6] = r * s;
    dt[7] = (1.0f - r) * s;
}

int PbHexahedronCell::getOrdering() const {
    return orderingOf(1, 3, 4);
}

PiMarchingCaseTable& PbHexahedronCell::caseTable() const {
    return table();
}
