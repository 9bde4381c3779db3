#include <Quillon/3Ddata/PbGrid2D.h>

#include <Quillon/graph/PoDebugError.h>

#include "3Ddata/PiGridAxes.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <vector>

PbGrid2D::PbGrid2D(int isDataDuplicate) : PbMesh2D(isDataDuplicate), m_cell(this) {}

PbGrid2D::PbGrid2D(const PbGrid2D& other)
    : PbMesh2D(other), m_numX(other.m_numX), m_numY(other.m_numY), m_cell(this) {}

PbGrid2D& PbGrid2D::operator=(const PbGrid2D& other) {
    if (this != &other) {
        m_numX = other.m_numX;
        m_numY = other.m_numY;
        m_axes.reset();
        PbMesh2D::operator=(other);
    }
    return *this;
}

PbGrid2D::~PbGrid2D() = default;

void PbGrid2D::getDim(int& numX, int& numY) const {
    numX = m_numX;
    numY = m_numY;
}

void PbGrid2D::getNodeIndices(int node, int& i, int& j) const {
    j = m_numY > 0 ? node % m_numY : 0;
    i = m_numY > 0 ? (node - j) / m_numY : 0;
}

void PbGrid2D::getCellIndices(int cell, int& i, int& j) const {
    int rowLength = m_numY - 1;
    j = rowLength > 0 ? cell % rowLength : 0;
    i = rowLength > 0 ? (cell - j) / rowLength : 0;
}

int* PbGrid2D::getCellNodeIds(int i, int j) const {
    m_cellNodeIds[0] = i * m_numY + j;
    m_cellNodeIds[1] = (i + 1) * m_numY + j;
    m_cellNodeIds[2] = (i + 1) * m_numY + j + 1;
    m_cellNodeIds[3] = i * m_numY + j + 1;
    return m_cellNodeIds;
}

int* PbGrid2D::getCellNodeIds(int cell) const {
    int i, j;
    getCellIndices(cell, i, j);
    return getCellNodeIds(i, j);
}

bool PbGrid2D::checkSizes(const char* method, int numX, int numY) const {
    if (numX < 0 || numY < 0) {
        PoDebugError::post(method, "negative grid size %d x %d", numX, numY);
        return false;
    }
    if (static_cast<int64_t>(numX) * numY > INT_MAX) {
        PoDebugError::post(method, "grid size %d x %d has too many nodes", numX, numY);
        return false;
    }
    return true;
}

void PbGrid2D::setGeometry(int numX, int numY, const float* x, const float* y) {
    setGeometry(numX, numY, x, y, nullptr);
}

void PbGrid2D::setGeometry(int numX, int numY, const float* x, const float* y, const float* z) {
    const char* method = "PbGrid2D::setGeometry";
    if (!checkSizes(method, numX, numY))
        return;
    if (numX * numY > 0 && (!x || !y)) {
        PoDebugError::post(method, "null x or y coordinates for a %d x %d grid", numX, numY);
        return;
    }
    setXYGeometry(numX, numY, x, y);
    finishGeometry(numX, numY, z);
}

void PbGrid2D::finishGeometry(int numX, int numY, const float* z) {
    int numCells = numX >= 2 && numY >= 2 ? (numX - 1) * (numY - 1) : 0;
    removeSetsNotFitting(numX * numY, numCells);
    bool newTopology = numX != m_numX || numY != m_numY;
    m_numX = numX;
    m_numY = numY;
    m_numNodes = numX * numY;
    m_numCells = numCells;
    storeZCoord(z);
    geometryChanged(newTopology);
}

SbVec3f PbGrid2D::getNodeCoord(int nodeIndex) const {
    int i, j;
    getNodeIndices(nodeIndex, i, j);
    return getNodeCoord(i, j);
}

const PbCell* PbGrid2D::getCell(int cellIndex) const {
    if (cellIndex < 0 || cellIndex >= m_numCells)
        return nullptr;
    std::copy(getCellNodeIds(cellIndex), m_cellNodeIds + 4, m_cellNodes);
    SbVec3f coords[4];
    for (int k = 0; k < 4; ++k)
        coords[k] = getNodeCoord(m_cellNodes[k]);
    m_cell.set(cellIndex, m_cellNodes, coords, hasZCoord());
    return &m_cell;
}

void PbGrid2D::getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const {
    cellIndices.empty();
    if (nodeIndex < 0 || nodeIndex >= m_numNodes)
        return;
    int i, j;
    getNodeIndices(nodeIndex, i, j);
    for (int a = i - 1; a <= i; ++a)
        for (int b = j - 1; b <= j; ++b)
            if (a >= 0 && a < m_numX - 1 && b >= 0 && b < m_numY - 1)
                cellIndices.add(a * (m_numY - 1) + b);
}

void PbGrid2D::getLimitIndices(PbArrayOfInt& limitNodes, PbArrayOfInt& limitSizes) const {
    limitNodes.empty();
    limitSizes.empty();
    if (m_numCells == 0)
        return;
    for (int i = 0; i < m_numX; ++i)
        limitNodes.add(i * m_numY);
    for (int j = 1; j < m_numY; ++j)
        limitNodes.add((m_numX - 1) * m_numY + j);
    for (int i = m_numX - 2; i >= 0; --i)
        limitNodes.add(i * m_numY + m_numY - 1);
    for (int j = m_numY - 2; j >= 0; --j)
        limitNodes.add(j);
    limitSizes.add(limitNodes.getNum());
}

void PbGrid2D::print(FILE* fp) const {
    PbMesh2D::print(fp);
    fprintf(fp, "PbGrid2D:: numX,numY %d %d\n", m_numX, m_numY);
}

const PbCell* PbGrid2D::findContainingCellProtected(const SbVec3f& point, float tolerance,
                                                    SbVec3f& pcoord,
                                                    PbArrayOfInt& testedCells) const {
    return findContainingCellInIndex(point, tolerance, pcoord, testedCells);
}

const PbCell* PbGrid2D::findInAxisAlignedCells(const SbVec3f& point, float tolerance,
                                               SbVec3f& pcoord,
                                               const PbArrayOfInt& testedCells) const {
    if (m_numCells <= 0)
        return nullptr;
    return PiGridAxes::of(*this, m_axes).firstCandidate(point, tolerance, [&](int i, int j, int) {
        return locateInUntestedCell(i * (m_numY - 1) + j, point, tolerance, pcoord, testedCells);
    });
}
