#include <Quillon/3Ddata/PbGrid3D.h>

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PoMeshCrossSection.h>
#include <Quillon/graph/PoDebugError.h>

#include "3Ddata/PiGridAxes.h"

#include <Inventor/SbLinear.h>

#include <climits>

PbGrid3D::PbGrid3D(int isDataDuplicate) : PbMesh3D(isDataDuplicate) {}

PbGrid3D::PbGrid3D(const PbGrid3D& other)
    : PbMesh3D(other), m_numX(other.m_numX), m_numY(other.m_numY), m_numZ(other.m_numZ) {}

PbGrid3D& PbGrid3D::operator=(const PbGrid3D& other) {
    if (this == &other)
        return *this;
    m_numX = other.m_numX;
    m_numY = other.m_numY;
    m_numZ = other.m_numZ;
    m_boxGeometryId = 0;
    m_axes.reset();
    PbMesh3D::operator=(other);
    return *this;
}

PbGrid3D::~PbGrid3D() = default;

void PbGrid3D::getDim(int& numX, int& numY, int& numZ) const {
    numX = m_numX;
    numY = m_numY;
    numZ = m_numZ;
}

void PbGrid3D::getNodeIndices(int nodeIndex, int& i, int& j, int& k) const {
    if (nodeIndex < 0 || nodeIndex >= m_numNodes) {
        PoDebugError::post("PbGrid3D::getNodeIndices", "node %d is not in 0 to %d", nodeIndex,
                           m_numNodes - 1);
        i = j = k = -1;
        return;
    }
    k = nodeIndex % m_numZ;
    int m = (nodeIndex - k) / m_numZ;
    j = m % m_numY;
    i = (m - j) / m_numY;
}

void PbGrid3D::getCellIndices(int cellIndex, int& i, int& j, int& k) const {
    if (!isCellIndexValid(cellIndex)) {
        PoDebugError::post("PbGrid3D::getCellIndices", "cell %d is not in 0 to %d", cellIndex,
                           m_numCells - 1);
        i = j = k = -1;
        return;
    }
    k = cellIndex % (m_numZ - 1);
    int m = (cellIndex - k) / (m_numZ - 1);
    j = m % (m_numY - 1);
    i = (m - j) / (m_numY - 1);
}

void PbGrid3D::fillCellNodeIds(int i, int j, int k, int* ids) const {
    ids[0] = nodeIndexOf(i, j, k);
    ids[1] = nodeIndexOf(i + 1, j, k);
    ids[2] = nodeIndexOf(i + 1, j + 1, k);
    ids[3] = nodeIndexOf(i, j + 1, k);
    for (int n = 0; n < 4; ++n)
        ids[n + 4] = ids[n] + 1;
}

const int* PbGrid3D::getCellNodeIds(int i, int j, int k) const {
    if (i < 0 || j < 0 || k < 0 || i >= m_numX - 1 || j >= m_numY - 1 || k >= m_numZ - 1) {
        PoDebugError::post("PbGrid3D::getCellNodeIds", "cell (%d, %d, %d) is not in the grid", i, j,
                           k);
        return nullptr;
    }
    fillCellNodeIds(i, j, k, m_cellNodeIds);
    return m_cellNodeIds;
}

const int* PbGrid3D::getCellNodeIds(int cellIndex) const {
    int i, j, k;
    getCellIndices(cellIndex, i, j, k);
    return i < 0 ? nullptr : getCellNodeIds(i, j, k);
}

const int* PbGrid3D::cellNodes(int cellIndex) const {
    int i, j, k;
    getCellIndices(cellIndex, i, j, k);
    fillCellNodeIds(i, j, k, m_cellObjectNodeIds);
    return m_cellObjectNodeIds;
}

bool PbGrid3D::areSizesValid(const char* methodName, int numX, int numY, int numZ) {
    if (numX < 0 || numY < 0 || numZ < 0) {
        PoDebugError::post(methodName, "negative size %d x %d x %d", numX, numY, numZ);
        return false;
    }
    // The node count is computed as numX * numY * numZ in int, so the
    // partial product must fit as well as the whole one.
    long long numXY = static_cast<long long>(numX) * numY;
    if (numXY > INT_MAX || numXY * numZ > INT_MAX) {
        PoDebugError::post(methodName, "%d x %d x %d nodes are too many", numX, numY, numZ);
        return false;
    }
    return true;
}

bool PbGrid3D::areAxisArraysValid(const char* methodName, int numX, int numY, int numZ,
                                  const float* x, const float* y, const float* z) {
    if ((numX > 0 && !x) || (numY > 0 && !y) || (numZ > 0 && !z)) {
        PoDebugError::post(methodName, "x, y and z must hold %d, %d and %d values", numX, numY,
                           numZ);
        return false;
    }
    return true;
}

void PbGrid3D::setGeometry(int numX, int numY, int numZ, const float* x, const float* y,
                           const float* z) {
    const char* method = "PbGrid3D::setGeometry";
    if (!areSizesValid(method, numX, numY, numZ) ||
        !isGeometryValid(method, numX, numY, numZ, x, y, z))
        return;
    setXYZGeometry(numX, numY, numZ, x, y, z);
    changeGeometry(numX, numY, numZ);
}

void PbGrid3D::changeGeometry(int numX, int numY, int numZ) {
    int numNodes = numX * numY * numZ;
    int numCells = numNodes > 0 ? (numX - 1) * (numY - 1) * (numZ - 1) : 0;
    removeSetsNotFitting(numNodes, numCells);
    bool resized = numX != m_numX || numY != m_numY || numZ != m_numZ;
    m_numX = numX;
    m_numY = numY;
    m_numZ = numZ;
    m_numNodes = numNodes;
    m_numCells = numCells;
    m_axes.reset();
    geometryChanged(resized);
}

void PbGrid3D::getGeometry(int& numX, int& numY, int& numZ, const float*& x, const float*& y,
                           const float*& z) const {
    getDim(numX, numY, numZ);
    getXYZGeometry(x, y, z);
}

bool PbGrid3D::areNodeIndicesValid(int i, int j, int k) const {
    return i >= 0 && j >= 0 && k >= 0 && i < m_numX && j < m_numY && k < m_numZ;
}

SbVec3f PbGrid3D::getNodeCoord(int i, int j, int k) const {
    if (!areNodeIndicesValid(i, j, k)) {
        PoDebugError::post("PbGrid3D::getNodeCoord", "node (%d, %d, %d) is not in the grid", i, j,
                           k);
        return SbVec3f(0.0f, 0.0f, 0.0f);
    }
    return nodeCoord(i, j, k);
}

SbVec3f PbGrid3D::getNodeCoord(int nodeIndex) const {
    int i, j, k;
    getNodeIndices(nodeIndex, i, j, k);
    return i < 0 ? SbVec3f(0.0f, 0.0f, 0.0f) : nodeCoord(i, j, k);
}

void PbGrid3D::getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const {
    cellIndices.empty();
    if (nodeIndex < 0 || nodeIndex >= m_numNodes)
        return;
    int i, j, k;
    getNodeIndices(nodeIndex, i, j, k);
    for (int a = i - 1; a <= i; ++a)
        for (int b = j - 1; b <= j; ++b)
            for (int c = k - 1; c <= k; ++c)
                if (a >= 0 && b >= 0 && c >= 0 && a < m_numX - 1 && b < m_numY - 1 &&
                    c < m_numZ - 1)
                    cellIndices.add(cellIndexOf(a, b, c));
}

void PbGrid3D::getAdjacentCellsIndByFacet(int cellIndex, PbArrayOfInt& adjacentCells) const {
    adjacentCells.empty();
    if (!isCellIndexValid(cellIndex))
        return;
    int cell[3];
    getCellIndices(cellIndex, cell[0], cell[1], cell[2]);
    const int numCellsAlong[3] = {m_numX - 1, m_numY - 1, m_numZ - 1};
    for (int axis = 0; axis < 3; ++axis)
        for (int step = -1; step <= 1; step += 2) {
            int neighbour[3] = {cell[0], cell[1], cell[2]};
            neighbour[axis] += step;
            if (neighbour[axis] >= 0 && neighbour[axis] < numCellsAlong[axis])
                adjacentCells.add(cellIndexOf(neighbour[0], neighbour[1], neighbour[2]));
        }
}

// Each side of the grid is a sheet of quadrangles; a quadrangle's area is
// half the length of the cross product of its diagonals.
float PbGrid3D::getArea() const {
    if (m_numCells <= 0)
        return 0.0f;
    const int dims[3] = {m_numX, m_numY, m_numZ};
    double area = 0.0;
    for (int axis = 0; axis < 3; ++axis) {
        int u = (axis + 1) % 3;
        int v = (axis + 2) % 3;
        for (int side : {0, dims[axis] - 1})
            for (int a = 0; a < dims[u] - 1; ++a)
                for (int b = 0; b < dims[v] - 1; ++b) {
                    int index[3];
                    index[axis] = side;
                    auto corner = [&](int da, int db) {
                        index[u] = a + da;
                        index[v] = b + db;
                        return nodeCoord(index[0], index[1], index[2]);
                    };
                    SbVec3f p0 = corner(0, 0), p1 = corner(1, 0), p2 = corner(1, 1),
                            p3 = corner(0, 1);
                    area += 0.5 * (p2 - p0).cross(p3 - p1).length();
                }
    }
    return static_cast<float>(area);
}

int PbGrid3D::evaluateSkinFacesNum() const {
    if (m_numCells <= 0)
        return 0;
    int cx = m_numX - 1, cy = m_numY - 1, cz = m_numZ - 1;
    return 2 * (cx * cy + cy * cz + cx * cz);
}

void PbGrid3D::print(FILE* fp) const {
    PbMesh3D::print(fp);
    fprintf(fp, "PbGrid3D:: numX,numY,numZ %d %d %d\n", m_numX, m_numY, m_numZ);
}

void PbGrid3D::updateBoundingBox() const {
    if (m_boxGeometryId == getGeometryId())
        return;
    m_boundingBox.makeEmpty();
    for (int i = 0; i < m_numX; ++i)
        for (int j = 0; j < m_numY; ++j)
            for (int k = 0; k < m_numZ; ++k)
                m_boundingBox.extendBy(nodeCoord(i, j, k));
    m_boxGeometryId = getGeometryId();
}

const PbCell* PbGrid3D::findContainingCellOnAxes(const SbVec3f& point, float tolerance,
                                                 SbVec3f& pcoord,
                                                 const PbArrayOfInt& testedCells) const {
    if (m_numCells <= 0)
        return nullptr;
    return PiGridAxes::of(*this, m_axes).firstCandidate(point, tolerance, [&](int i, int j, int k) {
        return locateInUntestedCell(cellIndexOf(i, j, k), point, tolerance, pcoord, testedCells);
    });
}

int PbGrid3D::isAxisAlignedPlane(const SbPlane& plane) {
    const SbVec3f& normal = plane.getNormal();
    int zeros = 0;
    for (int axis = 0; axis < 3; ++axis)
        if (std::fabs(normal[axis]) <= 1e-6f * normal.length())
            ++zeros;
    return zeros == 2;
}

void PbGrid3D::meshCrossSectionOnAxes(PoMeshCrossSection* kit) const {
    const SbPlane& plane = kit->plane.getValue();
    if (!isAxisAlignedPlane(plane)) {
        kit->crossSectionCells(this);
        return;
    }
    const SbVec3f& normal = plane.getNormal();
    int axis = 0;
    for (int a = 1; a < 3; ++a)
        if (std::fabs(normal[a]) > std::fabs(normal[axis]))
            axis = a;
    kit->crossSectionAcrossAxis(this, axis);
}
