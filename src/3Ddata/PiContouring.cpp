#include "3Ddata/PiContouring.h"

#include "3Ddata/PiContourCell.h"
#include "3Ddata/PiGridContouring.h"

#include <Quillon/3Ddata/PbCartesianGrid2D.h>
#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbPolarGrid2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PoDebugError.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>

namespace {
// The class-wide edge hash table.  A bucket holds one edge directly and
// the others in an overflow array.
const int s_numBuckets = 10007;
const int s_initialOverflow = 30;

struct EdgeBucket {
    int edge = -1;
    int numOverflow = 0;
    std::vector<int> overflow;
};

std::vector<EdgeBucket>* s_hashTable = nullptr;

std::vector<EdgeBucket>& hashTable() {
    if (!s_hashTable)
        s_hashTable = new std::vector<EdgeBucket>(s_numBuckets);
    return *s_hashTable;
}

void emptyHashTable() {
    for (EdgeBucket& bucket : hashTable()) {
        bucket.edge = -1;
        bucket.numOverflow = 0;
    }
}

// The key of the edge (a, b), a < b.  Computed wider than 32 bits, which
// gives the 32-bit result for every mesh whose node indices keep that sum
// in range.
int edgeKey(int a, int b) {
    const int64_t product = static_cast<int64_t>((a + 1) % s_numBuckets) * ((b + 1) % s_numBuckets);
    return static_cast<int>((static_cast<int64_t>(a) + b + product) % s_numBuckets);
}

int firstNotBelow(const float* isovalues, int count, float value) {
    return static_cast<int>(std::lower_bound(isovalues, isovalues + count, value) - isovalues);
}
} // namespace

PiContouring::PiContouring() = default;
PiContouring::~PiContouring() = default;

void PiContouring::freeHashTableIsoEdge() {
    delete s_hashTable;
    s_hashTable = nullptr;
}

// ---------------------------------------------------------------- meshes

void PiContouring::setMeshKind(MeshKind kind, const PbMesh2D* mesh, const float* z) {
    m_kind = kind;
    m_mesh = mesh;
    m_gridMesh = kind == INDEXED_MESH ? nullptr : static_cast<const PbGrid2D*>(mesh);
    m_z = z;
    m_orientFlags = nullptr;
    m_elementsBuilt = false;
    m_wallsApplied = false;
    m_elements.clear();
    m_onFastPath = false;
}

void PiContouring::setMesh(const PbIndexedMesh2D* mesh, const float* z) {
    setMeshKind(INDEXED_MESH, mesh, z);
    if (mesh && mesh->getElemOrientation())
        m_orientFlags = mesh->getOrientFlags();
    buildElements();
}

void PiContouring::setMesh(const PbCartesianGrid2D* mesh, const float* z) {
    setMeshKind(CARTESIAN_GRID, mesh, z);
}

void PiContouring::setMesh(const PbParalCartesianGrid2D* mesh, const float* z) {
    setMeshKind(PARAL_CARTESIAN_GRID, mesh, z);
}

void PiContouring::setMesh(const PbRegularCartesianGrid2D* mesh, const float* z) {
    setMeshKind(REGULAR_CARTESIAN_GRID, mesh, z);
}

void PiContouring::setMesh(const PbPolarGrid2D* mesh, const float* z) {
    setMeshKind(POLAR_GRID, mesh, z);
}

int PiContouring::getNumNodes() const {
    return m_mesh ? m_mesh->getNumNodes() : 0;
}

// -------------------------------------------------------------- elements

void PiContouring::addElems(int count) {
    const size_t size = m_elements.size() + static_cast<size_t>(count);
    try {
        m_elements.resize(size);
    } catch (const std::bad_alloc&) {
        PoDebugError::post("PiContouring::addElems",
                           "array in PiContouring::addElems().\n\tArray elements type : "
                           "TabMeshElem*.\n\tNumber of elements :%d\n\tSize to allocate :%.1f",
                           count, static_cast<double>(count) * sizeof(Element));
    }
}

// The grids' cells are quadrangles with the grid's node numbering.
void PiContouring::buildElements() {
    m_elements.clear();
    m_elementsBuilt = true;
    const int numCells = m_mesh ? m_mesh->getNumCells() : 0;
    addElems(numCells);
    if (static_cast<int>(m_elements.size()) != numCells) {
        m_elements.clear();
        return;
    }
    int numX = 0, numY = 0;
    if (m_gridMesh)
        m_gridMesh->getDim(numX, numY);
    const auto* indexed = m_gridMesh ? nullptr : static_cast<const PbIndexedMesh2D*>(m_mesh);
    for (int c = 0; c < numCells; ++c) {
        Element& element = m_elements[c];
        element = Element{0, {0, 0, 0, 0}, 0, {0, 0, 0, 0}};
        if (m_gridMesh) {
            const int i = c / (numY - 1), j = c % (numY - 1);
            const int n0 = i * numY + j;
            const int nodes[4] = {n0, n0 + numY, n0 + numY + 1, n0 + 1};
            element.kind = 4;
            std::copy(nodes, nodes + 4, element.nodes);
            continue;
        }
        const int numNodes = indexed->getCellNumNodes(c);
        const int* nodes = indexed->getCellNodeIndices(c);
        if ((numNodes == 3 || numNodes == 4) && nodes) {
            element.kind = numNodes;
            std::copy(nodes, nodes + numNodes, element.nodes);
        }
    }
}

const std::vector<PiContouring::Element>& PiContouring::getElements() {
    if (!m_elementsBuilt)
        buildElements();
    return m_elements;
}

bool PiContouring::hasFiniteValues(const Element& element, const float* values) const {
    for (int k = 0; k < element.kind; ++k)
        if (!std::isfinite(values[element.nodes[k]]))
            return false;
    return true;
}

void PiContouring::preventFromThresholdWall(const float* values) {
    if (!m_dataMapping || !m_dataMapping->isTransparencyEnabled() || !values)
        return;
    int minEnabled, maxEnabled;
    m_dataMapping->thresholdsEnabled(minEnabled, maxEnabled);
    const float deleted = m_dataMapping->getTransparencyValueDeletedParts();
    float minValue, minTransparency, maxValue, maxTransparency;
    m_dataMapping->getMinRGBThreshold(minValue, minTransparency);
    m_dataMapping->getMaxRGBThreshold(maxValue, maxTransparency);
    const bool useMin = minEnabled && minTransparency >= deleted;
    const bool useMax = maxEnabled && maxTransparency >= deleted;
    if (!useMin && !useMax)
        return;
    auto inside = [&](int node) {
        return (!useMin || values[node] > minValue) && (!useMax || values[node] < maxValue);
    };
    getElements();
    for (Element& element : m_elements) {
        if (element.kind != 3 && element.kind != 4)
            continue;
        int numInside = 0, outside = -1;
        for (int k = 0; k < element.kind; ++k) {
            if (inside(element.nodes[k]))
                ++numInside;
            else
                outside = k;
        }
        if (numInside == element.kind)
            continue;
        if (element.kind == 4 && numInside == 3) {
            std::copy(element.nodes + outside + 1, element.nodes + 4, element.nodes + outside);
            element.kind = 3;
        } else {
            element.kind = 0;
        }
    }
    m_wallsApplied = true;
}

// ------------------------------------------------------------ computation

void PiContouring::computeContouringPoints(const float* values, const float* z) {
    computeCrossings(values, z, true);
}

void PiContouring::computeCrossings(const float* values, const float* z, bool join) {
    m_isolinesBuilt = false;
    m_onFastPath = false;
    m_z = z;
    resetRecords();
    if (!values || !m_mesh)
        return;
    adjustIsovalList(getNumNodes(), values);
    if (computeOnFastPath(values, z, join))
        return;
    getElements();
    setPoints(z);
    emptyHashTable();
    findCrossings(values);
    if (join)
        searchNextVertex();
}

bool PiContouring::computeOnFastPath(const float* values, const float* z, bool join) {
    if (!m_gridMesh || !m_fastGridPathEnabled || m_wallsApplied)
        return false;
    int numIsovalues;
    const float* isovalues = getAdjustedIsovalues(numIsovalues);
    if (!m_grid)
        m_grid = std::make_unique<PiGridContouring>();
    PiGridContouring* grid = m_grid.get();
    if (!grid->computeBands(*m_gridMesh, values, z, isovalues, numIsovalues))
        return false;
    const int numCrossings = grid->countCrossings();
    m_points.assign(numCrossings + 1, SbVec3f(0.0f, 0.0f, 0.0f));
    m_crossings.assign(numCrossings + 1, PiCrossing{0, 0, {0, 0}, 0});
    grid->emitCrossings(m_points.data(), m_crossings.data(), &m_starts);
    if (join) {
        for (int failures = grid->joinCrossings(m_points.data(), m_crossings.data()); failures > 0;
             --failures)
            PoDebugError::post("PiContouring::tsearch_next_vertex_in_elem ",
                               "search next vertex of isoline failed");
    }
    m_onFastPath = true;
    return true;
}

const SbVec3f* PiContouring::getCrossingPoints() const {
    // The general path puts the crossing points after the nodes; the fast
    // path keeps the crossing points alone.
    if (m_onFastPath || getNumNodes() == 0)
        return m_points.data();
    return m_points.data() + getNumNodes() - 1;
}

void PiContouring::setPoints(const float* z) {
    const int numNodes = getNumNodes();
    m_points.resize(numNodes);
    for (int n = 0; n < numNodes; ++n) {
        m_points[n] = m_mesh->getNodeCoord(n);
        m_points[n][2] = z ? z[n] : 0.0f;
    }
}

void PiContouring::resetRecords() {
    m_edges.assign(1, Edge{{0, 0}, 0, 0, {-1, -1}});
    m_crossings.assign(1, PiCrossing{0, 0, {0, 0}, 0});
    m_starts.assign(1, 0);
    m_points.clear();
    for (Element& element : m_elements) {
        element.numCutEdges = 0;
        std::fill(element.edges, element.edges + 4, 0);
    }
}

void PiContouring::findCrossings(const float* values) {
    int numIsovalues;
    const float* isovalues = getAdjustedIsovalues(numIsovalues);
    for (int e = 0; e < static_cast<int>(m_elements.size()); ++e) {
        const Element& element = m_elements[e];
        if ((element.kind != 3 && element.kind != 4) || !hasFiniteValues(element, values))
            continue;
        for (int s = 0; s < element.kind; ++s) {
            const int a = element.nodes[s], b = element.nodes[(s + 1) % element.kind];
            const float lo = std::min(values[a], values[b]), hi = std::max(values[a], values[b]);
            const int k = firstNotBelow(isovalues, numIsovalues, lo);
            if (k < numIsovalues && hi > isovalues[k])
                addIsolineEdge(a, b, values[a], values[b], k, e, s);
        }
    }
}

void PiContouring::addIsolineEdge(int a, int b, float va, float vb, int k, int element, int side) {
    if (b < a) {
        std::swap(a, b);
        std::swap(va, vb);
    }
    EdgeBucket& bucket = hashTable()[edgeKey(a, b)];
    auto isThisEdge = [&](int edge) {
        return m_edges[edge].nodes[0] == a && m_edges[edge].nodes[1] == b;
    };
    int edge = bucket.edge >= 0 && isThisEdge(bucket.edge) ? bucket.edge : 0;
    for (int o = 0; !edge && o < bucket.numOverflow; ++o)
        if (isThisEdge(bucket.overflow[o]))
            edge = bucket.overflow[o];

    if (edge) {
        m_edges[edge].elements[1] = element;
    } else {
        edge = static_cast<int>(m_edges.size());
        if (bucket.edge < 0) {
            bucket.edge = edge;
        } else {
            if (bucket.overflow.empty())
                bucket.overflow.resize(s_initialOverflow);
            else if (bucket.numOverflow == static_cast<int>(bucket.overflow.size()))
                bucket.overflow.resize(2 * bucket.overflow.size());
            bucket.overflow[bucket.numOverflow++] = edge;
        }
        // From the node of the lower value to that of the higher one.
        int low = a, high = b;
        if (vb < va) {
            std::swap(low, high);
            std::swap(va, vb);
        }
        int numIsovalues;
        const float* isovalues = getAdjustedIsovalues(numIsovalues);
        const int first = static_cast<int>(m_crossings.size());
        int count = 0;
        for (int c = k; c < numIsovalues && isovalues[c] < vb; ++c, ++count) {
            m_crossings.push_back({c, static_cast<int>(m_points.size()), {0, 0}, edge});
            m_points.push_back(
                PiContourCell::interpolate(m_points[low], m_points[high], va, vb, isovalues[c]));
        }
        m_edges.push_back({{a, b}, first, count, {element, -1}});
    }
    Element& record = m_elements[element];
    ++record.numCutEdges;
    record.edges[side] = edge;
}

// ---------------------------------------------------------------- joining

void PiContouring::searchNextVertex() {
    for (int i = 1; i < static_cast<int>(m_crossings.size()); ++i) {
        const Edge edge = m_edges[m_crossings[i].edge];
        for (int slot = 0; slot < 2; ++slot)
            if (!m_crossings[i].link[slot] && edge.elements[slot] >= 0)
                tsearch_next_vertex_in_elem(i, edge.elements[slot], slot);
        if (edge.elements[1] < 0)
            m_starts.push_back(i);
    }
}

void PiContouring::tsearch_next_vertex_in_elem(int crossing, int element, int slot) {
    PiContourCell cell;
    describeElement(element, nullptr, cell);
    const Element& record = m_elements[element];
    int side = -1;
    for (int s = 0; s < record.kind; ++s)
        if (record.edges[s] == m_crossings[crossing].edge)
            side = s;
    const int next =
        side >= 0 ? cell.nextCrossing(side, m_crossings[crossing].iso, getCrossingPoints()) : 0;
    if (!next) {
        PoDebugError::post("PiContouring::tsearch_next_vertex_in_elem ",
                           "search next vertex of isoline failed");
        return;
    }
    const Edge& nextEdge = m_edges[m_crossings[next].edge];
    m_crossings[next].link[nextEdge.elements[0] == element ? 0 : 1] = crossing;
    m_crossings[crossing].link[slot] = next;
}

void PiContouring::describeElement(int element, const float* values, PiContourCell& cell) const {
    const Element& record = m_elements[element];
    int numIsovalues;
    const float* isovalues = getAdjustedIsovalues(numIsovalues);
    cell.numSides = record.kind;
    for (int s = 0; s < record.kind; ++s) {
        cell.nodes[s] = record.nodes[s];
        cell.bands[s] =
            values ? firstNotBelow(isovalues, numIsovalues, values[record.nodes[s]]) : 0;
        cell.sides[s] = PiContourCell::Side();
        if (const int edge = record.edges[s]) {
            cell.sides[s].firstCrossing = m_edges[edge].firstCrossing;
            cell.sides[s].firstIso = m_crossings[m_edges[edge].firstCrossing].iso;
            cell.sides[s].count = m_edges[edge].numCrossings;
        }
    }
}

const PiIsolines& PiContouring::getIsolines() {
    if (!m_isolinesBuilt) {
        m_isolines.build(m_crossings, m_points.data(), m_starts);
        m_isolinesBuilt = true;
    }
    return m_isolines;
}
