#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>

#include "3Ddata/PiContouring.h"

#include <Quillon/graph/PoDebugError.h>

#include <climits>
#include <deque>

PbIndexedMesh2D::PbIndexedMesh2D(int isDataDuplicate)
    : PbMesh2D(isDataDuplicate), m_x(isDataDuplicate), m_y(isDataDuplicate),
      m_cellTypes(isDataDuplicate), m_cellIndices(isDataDuplicate), m_triangle(this),
      m_quadrangle(this) {}

PbIndexedMesh2D::PbIndexedMesh2D(const PbIndexedMesh2D& other)
    : PbMesh2D(other), m_x(other.m_x), m_y(other.m_y), m_cellTypes(other.m_cellTypes),
      m_fixedSize(other.m_fixedSize), m_cellIndices(other.m_cellIndices),
      m_cellStarts(other.m_cellStarts), m_ownerStarts(other.m_ownerStarts),
      m_ownerCells(other.m_ownerCells), m_elemOrientation(other.m_elemOrientation),
      m_orientFlags(other.m_orientFlags), m_triangle(this), m_quadrangle(this) {}

PbIndexedMesh2D& PbIndexedMesh2D::operator=(const PbIndexedMesh2D& other) {
    if (this == &other)
        return *this;
    m_x = other.m_x;
    m_y = other.m_y;
    m_cellTypes = other.m_cellTypes;
    m_fixedSize = other.m_fixedSize;
    m_cellIndices = other.m_cellIndices;
    m_cellStarts = other.m_cellStarts;
    m_ownerStarts = other.m_ownerStarts;
    m_ownerCells = other.m_ownerCells;
    m_elemOrientation = other.m_elemOrientation;
    m_orientFlags = other.m_orientFlags;
    PbMesh2D::operator=(other);
    return *this;
}

PbIndexedMesh2D::~PbIndexedMesh2D() = default;

void PbIndexedMesh2D::setGeometry(int numNodes, const float* x, const float* y, int numCells,
                                  const int* cellTypes, const int* cellIndices) {
    setGeometry(numNodes, x, y, nullptr, numCells, cellTypes, cellIndices);
}

void PbIndexedMesh2D::setGeometry(int numNodes, const float* x, const float* y, const float* z,
                                  int numCells, const int* cellTypes, const int* cellIndices) {
    storeGeometry("PbIndexedMesh2D::setGeometry", numNodes, x, y, z, numCells, cellTypes, 0,
                  cellIndices);
}

void PbIndexedMesh2D::getGeometry(int& numNodes, const float*& x, const float*& y, const float*& z,
                                  int& numCells, const int*& cellTypes,
                                  const int*& cellIndices) const {
    numNodes = m_numNodes;
    x = m_x.get();
    y = m_y.get();
    z = getZcoord();
    numCells = m_numCells;
    cellTypes = m_cellTypes.get();
    cellIndices = m_cellIndices.get();
}

bool PbIndexedMesh2D::acceptsCellSize(int numNodes) const {
    return numNodes == 3 || numNodes == 4;
}

bool PbIndexedMesh2D::checkGeometry(const char* method, int numNodes, const float* x,
                                    const float* y, int numCells, const int* cellTypes,
                                    int fixedSize, const int* cellIndices) const {
    if (numNodes < 0 || numCells < 0) {
        PoDebugError::post(method, "negative number of nodes (%d) or cells (%d)", numNodes,
                           numCells);
        return false;
    }
    if (numCells > INT_MAX / 4) {
        PoDebugError::post(method, "too many cells (%d)", numCells);
        return false;
    }
    if (numNodes > 0 && (!x || !y)) {
        PoDebugError::post(method, "null x or y coordinates for %d nodes", numNodes);
        return false;
    }
    if (numCells > 0 && (!cellIndices || (!cellTypes && fixedSize == 0))) {
        PoDebugError::post(method, "null cell arrays for %d cells", numCells);
        return false;
    }
    int first = 0;
    for (int c = 0; c < numCells; ++c) {
        int size = cellTypes ? cellTypes[c] : fixedSize;
        if (!acceptsCellSize(size)) {
            PoDebugError::post(method, "cell %d has %d nodes, a size that this mesh does not take",
                               c, size);
            return false;
        }
        for (int k = first; k < first + size; ++k) {
            if (cellIndices[k] < 0 || cellIndices[k] >= numNodes) {
                PoDebugError::post(method, "cell %d refers to node %d of a mesh of %d nodes", c,
                                   cellIndices[k], numNodes);
                return false;
            }
        }
        first += size;
    }
    return true;
}

void PbIndexedMesh2D::storeGeometry(const char* method, int numNodes, const float* x,
                                    const float* y, const float* z, int numCells,
                                    const int* cellTypes, int fixedSize, const int* cellIndices) {
    if (!checkGeometry(method, numNodes, x, y, numCells, cellTypes, fixedSize, cellIndices))
        return;
    removeSetsNotFitting(numNodes, numCells);
    m_x.set(x, numNodes);
    m_y.set(y, numNodes);
    m_cellTypes.set(cellTypes, cellTypes ? numCells : 0);
    m_fixedSize = cellTypes ? 0 : fixedSize;
    m_numNodes = numNodes;
    m_numCells = numCells;
    buildCellStarts();
    m_cellIndices.set(cellIndices, m_cellStarts.back());
    buildOwners();
    storeZCoord(z);
    m_orientFlags.clear();
    geometryChanged(true);
}

void PbIndexedMesh2D::buildCellStarts() {
    m_cellStarts.assign(1, 0);
    for (int c = 0; c < m_numCells; ++c)
        m_cellStarts.push_back(m_cellStarts.back() + (m_fixedSize ? m_fixedSize : m_cellTypes[c]));
}

void PbIndexedMesh2D::buildOwners() {
    // A node repeated within one cell is owned by it once.
    auto forEachOwner = [this](auto visit) {
        for (int c = 0; c < m_numCells; ++c)
            for (int k = m_cellStarts[c]; k < m_cellStarts[c + 1]; ++k) {
                bool repeated = false;
                for (int before = m_cellStarts[c]; before < k; ++before)
                    repeated = repeated || m_cellIndices[before] == m_cellIndices[k];
                if (!repeated)
                    visit(m_cellIndices[k], c);
            }
    };
    m_ownerStarts.assign(m_numNodes + 1, 0);
    forEachOwner([this](int node, int) { ++m_ownerStarts[node + 1]; });
    for (int n = 0; n < m_numNodes; ++n)
        m_ownerStarts[n + 1] += m_ownerStarts[n];
    m_ownerCells.assign(m_ownerStarts.back(), 0);
    std::vector<int> next(m_ownerStarts.begin(), m_ownerStarts.end() - 1);
    forEachOwner([&](int node, int cell) { m_ownerCells[next[node]++] = cell; });
}

int PbIndexedMesh2D::getCellNumNodes(int cellIndex) const {
    if (cellIndex < 0 || cellIndex >= m_numCells)
        return 0;
    return m_cellStarts[cellIndex + 1] - m_cellStarts[cellIndex];
}

const int* PbIndexedMesh2D::getCellNodeIndices(int cellIndex) const {
    if (cellIndex < 0 || cellIndex >= m_numCells)
        return nullptr;
    return m_cellIndices.get() + m_cellStarts[cellIndex];
}

SbVec3f PbIndexedMesh2D::getNodeCoord(int nodeIndex) const {
    return SbVec3f(m_x[nodeIndex], m_y[nodeIndex], getZ(nodeIndex));
}

const PbCell* PbIndexedMesh2D::getCell(int cellIndex) const {
    const int* nodes = getCellNodeIndices(cellIndex);
    if (!nodes)
        return nullptr;
    PbCell* cell = getCellNumNodes(cellIndex) == 3 ? static_cast<PbCell*>(&m_triangle)
                                                   : static_cast<PbCell*>(&m_quadrangle);
    cell->set(cellIndex, nodes, m_x.get(), m_y.get(), getZcoord());
    return cell;
}

void PbIndexedMesh2D::getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const {
    cellIndices.empty();
    if (nodeIndex < 0 || nodeIndex >= m_numNodes)
        return;
    for (int k = m_ownerStarts[nodeIndex]; k < m_ownerStarts[nodeIndex + 1]; ++k)
        cellIndices.add(m_ownerCells[k]);
}

const PbCell* PbIndexedMesh2D::findContainingCellProtected(const SbVec3f& point, float tolerance,
                                                           SbVec3f& pcoord,
                                                           PbArrayOfInt& testedCells) const {
    return findContainingCellInIndex(point, tolerance, pcoord, testedCells);
}

void PbIndexedMesh2D::setElemOrientation(int on) {
    m_elemOrientation = on ? 1 : 0;
    notify(CHANGE);
}

const int* PbIndexedMesh2D::getOrientFlags() const {
    if (!m_elemOrientation)
        return nullptr;
    if (static_cast<int>(m_orientFlags.size()) != m_numCells)
        computeOrientFlags();
    return m_orientFlags.data();
}

void PbIndexedMesh2D::computeOrientFlags() const {
    // Neighbours through shared sides, and whether the neighbour runs along
    // the side in the same direction (then the two cells wind oppositely).
    struct Neighbour {
        int cell;
        bool sameDirection;
    };
    std::vector<std::vector<Neighbour>> neighbours(m_numCells);
    for (const std::vector<CellSide>& group : getSideGroups())
        for (const CellSide& a : group)
            for (const CellSide& b : group)
                if (a.cell != b.cell)
                    neighbours[a.cell].push_back({b.cell, a.from == b.from});
    const int unset = -1;
    m_orientFlags.assign(m_numCells, unset);
    for (int seed = 0; seed < m_numCells; ++seed) {
        if (m_orientFlags[seed] != unset)
            continue;
        m_orientFlags[seed] = getCellNormal(*getCell(seed))[2] >= 0.0f ? 1 : 0;
        std::deque<int> queue{seed};
        while (!queue.empty()) {
            int c = queue.front();
            queue.pop_front();
            for (const Neighbour& n : neighbours[c]) {
                if (m_orientFlags[n.cell] != unset)
                    continue;
                m_orientFlags[n.cell] = n.sameDirection ? 1 - m_orientFlags[c] : m_orientFlags[c];
                queue.push_back(n.cell);
            }
        }
    }
}

void PbIndexedMesh2D::print(FILE* fp) const {
    PbMesh2D::print(fp);
    m_x.printAddress(fp, "PbIndexedMesh2D:: x");
    m_y.printAddress(fp, "PbIndexedMesh2D:: y");
    fprintf(fp, "PbIndexedMesh2D:: elemIndexSize = %d\n", m_cellStarts.back());
    for (int c = 0; c < m_numCells; ++c) {
        fprintf(fp, "PbIndexedMesh2D:: elemIndex[%d] =", c);
        for (int k = m_cellStarts[c]; k < m_cellStarts[c + 1]; ++k)
            fprintf(fp, " %d", m_cellIndices[k]);
        fprintf(fp, "\n");
    }
}

void PbIndexedMesh2D::meshContouring(PiContouring* contouring, const float* zValues) const {
    if (contouring)
        contouring->setMesh(this, zValues);
}

void PbIndexedMesh2D::meshFilled(PoMeshFilled* kit) const {
    if (kit)
        kit->indexedMeshFilled(this);
}
