#include <Quillon/3Ddata/PbTetrahedronCell.h>

#include "3Ddata/PiMarchingCaseTable.h"
#include "3Ddata/PiMarchingTetraCase.h"

#include <cmath>

namespace {

const float s_reference[4][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

const PbCell::Shape s_shape = {
    4, 6, 4, PiMarchingTetraCase::s_edges, PiMarchingTetraCase::s_facets, s_reference};

PiMarchingCaseTable& table() {
    static PiMarchingCaseTable s_table(
        4, "PbTetrahedronCell::addMC , ",
        [](unsigned char base, unsigned char id) -> std::unique_ptr<PiMarchingCase> {
            return std::make_unique<PiMarchingTetraCase>(base, id);
        },
        {{0, {}, {}}, {1, {0, 3, 2}, {}}, {3, {1, 4, 2, 3}, {}}});
    return s_table;
}

} // namespace

PbTetrahedronCell::PbTetrahedronCell(const PbMesh* owner) : PbVolumeCell(s_shape, owner) {}

int PbTetrahedronCell::init() {
    return table().init();
}

void PbTetrahedronCell::finish() {
    table().finish();
}

float PbTetrahedronCell::getVolume() const {
    SbVec3f p0 = coord(0);
    return std::fabs((coord(1) - p0).cross(coord(2) - p0).dot(coord(3) - p0)) / 6.0f;
}

int PbTetrahedronCell::locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const {
    if (!m_inverseComputed)
        computeInverse();
    if (!m_invertible) {
        pcoord.setValue(0.0f, 0.0f, 0.0f);
        return 0;
    }
    SbVec3f d = point - coord(0);
    for (int row = 0; row < 3; ++row)
        pcoord[row] =
            m_inverse[row][0] * d[0] + m_inverse[row][1] * d[1] + m_inverse[row][2] * d[2];
    float r = pcoord[0], s = pcoord[1], t = pcoord[2];
    return isInRange(1.0f - r - s - t, tolerance) && isInRange(r, tolerance) &&
                   isInRange(s, tolerance) && isInRange(t, tolerance)
               ? 1
               : 0;
}

void PbTetrahedronCell::getWeight(const SbVec3f& pcoord, float* weights) const {
    weights[0] = 1.0f - pcoord[0] - pcoord[1] - pcoord[2];
    weights[1] = pcoord[0];
    weights[2] = pcoord[1];
    weights[3] = pcoord[2];
}

void PbTetrahedronCell::getDerivs(const SbVec3f&, float* dr, float* ds, float* dt) const {
    for (int node = 0; node < 4; ++node) {
        dr[node] = node == 1 ? 1.0f : 0.0f;
        ds[node] = node == 2 ? 1.0f : 0.0f;
        dt[node] = node == 3 ? 1.0f : 0.0f;
    }
    dr[0] = ds[0] = dt[0] = -1.0f;
}

void PbTetrahedronCell::print(FILE* fp) const {
    PbVolumeCell::print(fp);
    fprintf(fp, "PbTetrahedronCell:: affine transformation matrix ...\n");
    if (!m_inverseComputed || !m_invertible)
        return;
    for (const float* row : m_inverse)
        printFloats(fp, "PbTetrahedronCell::", {row[0], row[1], row[2]});
}

int PbTetrahedronCell::getOrdering() const {
    return orderingOf(1, 2, 3);
}

void PbTetrahedronCell::nodesChanged(bool) {
    m_inverseComputed = false;
}

PiMarchingCaseTable& PbTetrahedronCell::caseTable() const {
    return table();
}

// Inverts the matrix whose columns are the edges from node 0: the rows of
// the inverse are the cross products of the other two columns over the
// determinant.
void PbTetrahedronCell::computeInverse() const {
    m_inverseComputed = true;
    SbVec3f columns[3] = {coord(1) - coord(0), coord(2) - coord(0), coord(3) - coord(0)};
    float det = columns[0].dot(columns[1].cross(columns[2]));
    m_invertible = det != 0.0f;
    if (!m_invertible)
        return;
    for (int row = 0; row < 3; ++row) {
        SbVec3f inverseRow = columns[(row + 1) % 3].cross(columns[(row + 2) % 3]) / det;
        for (int column = 0; column < 3; ++column)
            m_inverse[row][column] = inverseRow[column];
    }
}
