#include <Quillon/3Ddata/PbUnstructuredMesh3D.h>

#include <Quillon/graph/PoDebugError.h>

#include "3Ddata/PiKeyedLists.h"

#include <algorithm>
#include <climits>

namespace {

bool isVolumeCellSize(int size) {
    return size == 4 || size == 5 || size == 6 || size == 8;
}

} // namespace

PbUnstructuredMesh3D::PbUnstructuredMesh3D(int isDataDuplicate)
    : PbMesh3D(isDataDuplicate), m_coords{PbMeshArray<float>(isDataDuplicate),
                                          PbMeshArray<float>(isDataDuplicate),
                                          PbMeshArray<float>(isDataDuplicate)},
      m_cellSizes(isDataDuplicate), m_cellIndices(isDataDuplicate) {}

PbUnstructuredMesh3D::PbUnstructuredMesh3D(const PbUnstructuredMesh3D& other)
    : PbMesh3D(other), m_coords{other.m_coords[0], other.m_coords[1], other.m_coords[2]},
      m_cellSizes(other.m_cellSizes), m_cellIndices(other.m_cellIndices),
      m_fixedCellSize(other.m_fixedCellSize), m_cellStarts(other.m_cellStarts) {}

PbUnstructuredMesh3D& PbUnstructuredMesh3D::operator=(const PbUnstructuredMesh3D& other) {
    if (this == &other)
        return *this;
    for (int axis = 0; axis < 3; ++axis)
        m_coords[axis] = other.m_coords[axis];
    m_cellSizes = other.m_cellSizes;
    m_cellIndices = other.m_cellIndices;
    m_fixedCellSize = other.m_fixedCellSize;
    m_cellStarts = other.m_cellStarts;
    m_ownersTopologyId = 0;
    m_boxGeometryId = 0;
    PbMesh3D::operator=(other);
    return *this;
}

PbUnstructuredMesh3D::~PbUnstructuredMesh3D() = default;

bool PbUnstructuredMesh3D::isTopologyValid(const char* methodName, int numNodes, int numCells,
                                           const int* cellSizes, int fixedCellSize,
                                           const int* cellIndices) const {
    if (numCells > 0 && (!cellIndices || (fixedCellSize == 0 && !cellSizes))) {
        PoDebugError::post(methodName, "the %d cells have no node indices", numCells);
        return false;
    }
    long long numIndices = 0;
    for (int c = 0; c < numCells; ++c) {
        int size = cellSizes ? cellSizes[c] : fixedCellSize;
        if (!isVolumeCellSize(size)) {
            PoDebugError::post(methodName, "cell %d has %d nodes instead of 4, 5, 6 or 8", c, size);
            return false;
        }
        numIndices += size;
    }
    if (numIndices > INT_MAX) {
        PoDebugError::post(methodName, "%d cells have too many node indices", numCells);
        return false;
    }
    for (long long n = 0; n < numIndices; ++n)
        if (cellIndices[n] < 0 || cellIndices[n] >= numNodes) {
            PoDebugError::post(methodName, "node index %d at %lld is not in 0 to %d",
                               cellIndices[n], n, numNodes - 1);
            return false;
        }
    return true;
}

void PbUnstructuredMesh3D::changeGeometry(const char* methodName, int numNodes, const float* x,
                                          const float* y, const float* z, int numCells,
                                          const int* cellSizes, int fixedCellSize,
                                          const int* cellIndices) {
    if (numNodes < 0 || numCells < 0) {
        PoDebugError::post(methodName, "negative count: %d nodes, %d cells", numNodes, numCells);
        return;
    }
    if (numNodes > 0 && (!x || !y || !z)) {
        PoDebugError::post(methodName, "x, y and z must each hold %d values", numNodes);
        return;
    }
    if (!isTopologyValid(methodName, numNodes, numCells, cellSizes, fixedCellSize, cellIndices))
        return;
    removeSetsNotFitting(numNodes, numCells);

    const float* arrays[3] = {x, y, z};
    for (int axis = 0; axis < 3; ++axis)
        m_coords[axis].set(arrays[axis], numNodes);
    m_fixedCellSize = cellSizes ? 0 : fixedCellSize;
    m_cellStarts.clear();
    int numIndices = numCells * fixedCellSize;
    if (cellSizes) {
        m_cellStarts.resize(numCells + 1, 0);
        for (int c = 0; c < numCells; ++c)
            m_cellStarts[c + 1] = m_cellStarts[c] + cellSizes[c];
        numIndices = m_cellStarts[numCells];
    }
    m_cellSizes.set(cellSizes, cellSizes ? numCells : 0);
    m_cellIndices.set(cellIndices, numIndices);
    m_numNodes = numNodes;
    m_numCells = numCells;
    geometryChanged(true);
}

int PbUnstructuredMesh3D::cellStart(int cellIndex) const {
    return m_fixedCellSize ? cellIndex * m_fixedCellSize : m_cellStarts[cellIndex];
}

int PbUnstructuredMesh3D::cellSize(int cellIndex) const {
    return m_fixedCellSize ? m_fixedCellSize
                           : m_cellStarts[cellIndex + 1] - m_cellStarts[cellIndex];
}

SbVec3f PbUnstructuredMesh3D::getNodeCoord(int nodeIndex) const {
    if (nodeIndex < 0 || nodeIndex >= m_numNodes) {
        PoDebugError::post("PbUnstructuredMesh3D::getNodeCoord", "node %d is not in 0 to %d",
                           nodeIndex, m_numNodes - 1);
        return SbVec3f(0.0f, 0.0f, 0.0f);
    }
    return SbVec3f(m_coords[0][nodeIndex], m_coords[1][nodeIndex], m_coords[2][nodeIndex]);
}

const int* PbUnstructuredMesh3D::getCellNodeIndices(int cellIndex, int& numCellNodes) const {
    if (cellIndex < 0 || cellIndex >= m_numCells) {
        numCellNodes = 0;
        return nullptr;
    }
    numCellNodes = cellSize(cellIndex);
    return m_cellIndices.get() + cellStart(cellIndex);
}

const PbCell* PbUnstructuredMesh3D::getCell(int cellIndex) const {
    int numCellNodes;
    const int* nodes = getCellNodeIndices(cellIndex, numCellNodes);
    if (!nodes)
        return nullptr;
    PbCell* cell = &m_hexahedron;
    if (numCellNodes == 4)
        cell = &m_tetrahedron;
    else if (numCellNodes == 5)
        cell = &m_pyramid;
    else if (numCellNodes == 6)
        cell = &m_wedge;
    cell->set(cellIndex, nodes, m_coords[0].get(), m_coords[1].get(), m_coords[2].get());
    return cell;
}

// Lists each cell once per distinct node, in ascending cell index.
void PbUnstructuredMesh3D::buildOwnerCells() const {
    auto forEachDistinctNode = [this](int c, auto add) {
        int numCellNodes;
        const int* nodes = getCellNodeIndices(c, numCellNodes);
        for (int n = 0; n < numCellNodes; ++n)
            if (std::find(nodes, nodes + n, nodes[n]) == nodes + n)
                add(nodes[n]);
    };
    PiKeyedLists::build(m_numCells, m_numNodes, forEachDistinctNode, m_ownerStarts, m_ownerCells);
    m_ownersTopologyId = getTopologyId();
}

void PbUnstructuredMesh3D::getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const {
    cellIndices.empty();
    if (nodeIndex < 0 || nodeIndex >= m_numNodes)
        return;
    if (m_ownersTopologyId != getTopologyId())
        buildOwnerCells();
    for (int n = m_ownerStarts[nodeIndex]; n < m_ownerStarts[nodeIndex + 1]; ++n)
        cellIndices.add(m_ownerCells[n]);
}

void PbUnstructuredMesh3D::setCoordinates(const float* x, const float* y, const float* z) {
    if (m_numNodes > 0 && (!x || !y || !z)) {
        PoDebugError::post("PbUnstructuredMesh3D::setCoordinates",
                           "x, y and z must each hold %d values", m_numNodes);
        return;
    }
    const float* arrays[3] = {x, y, z};
    for (int axis = 0; axis < 3; ++axis)
        m_coords[axis].set(arrays[axis], m_numNodes);
    geometryChanged(false);
}

void PbUnstructuredMesh3D::getCoordinates(const float*& x, const float*& y, const float*& z,
                                          int& sizeX, int& sizeY, int& sizeZ) const {
    x = m_coords[0].get();
    y = m_coords[1].get();
    z = m_coords[2].get();
    sizeX = sizeY = sizeZ = m_numNodes;
}

void PbUnstructuredMesh3D::updateBoundingBox() const {
    if (m_boxGeometryId == getGeometryId())
        return;
    m_boundingBox.makeEmpty();
    for (int n = 0; n < m_numNodes; ++n)
        m_boundingBox.extendBy(SbVec3f(m_coords[0][n], m_coords[1][n], m_coords[2][n]));
    m_boxGeometryId = getGeometryId();
}

const PbCell* PbUnstructuredMesh3D::findContainingCellProtected(const SbVec3f& point,
                                                                float tolerance, SbVec3f& pcoord,
                                                                PbArrayOfInt& testedCells) const {
    return findContainingCellInIndex(point, tolerance, pcoord, testedCells);
}

void PbUnstructuredMesh3D::printCellIndices(FILE* fp, const char* className) const {
    for (int c = 0; c < m_numCells; ++c) {
        int numCellNodes;
        const int* nodes = getCellNodeIndices(c, numCellNodes);
        fprintf(fp, "%s:: elemIndex[%d] =", className, c);
        for (int n = 0; n < numCellNodes; ++n)
            fprintf(fp, " %d", nodes[n]);
        fprintf(fp, "\n");
    }
}
