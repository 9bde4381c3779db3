#include "3Ddata/PiLevelSurface.h"

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbCellFilterIterator.h>
#include <Quillon/3Ddata/PbGrid3D.h>

#include "3Ddata/PiGridLevelSurface.h"
#include "3Ddata/PiMarchingCase.h"

#include <algorithm>
#include <cmath>

PiLevelSurface::PiLevelSurface() = default;
PiLevelSurface::~PiLevelSurface() = default;

size_t PiLevelSurface::FacetKeyHash::operator()(const FacetKey& key) const {
    size_t hash = 0;
    for (int node : key)
        hash = hash * 0x9E3779B97F4A7C15ull + static_cast<unsigned int>(node);
    return hash;
}

void PiLevelSurface::clear() {
    m_points.clear();
    m_coordIndex.clear();
    m_openFacets.clear();
    m_skippedNaN = false;
}

PiLevelSurface::Outcome PiLevelSurface::build(const Request& request) {
    clear();
    m_style = request.style;
    m_level = request.level;
    if (!request.mesh || request.mesh->getNumCells() <= 0)
        return BUILT;
    bool isGrid = dynamic_cast<const PbGrid3D*>(request.mesh) != nullptr;
    if (isGrid && !request.filter && !request.cellByCell)
        return buildGrid(request);
    return buildCellByCell(request);
}

bool PiLevelSurface::isFirstCellMirrored(const Request& request) const {
    PbCellFilterIterator cells(request.mesh, request.filter, request.filterValues);
    int first = cells.first();
    return first < request.mesh->getNumCells() && request.mesh->getCell(first)->getOrdering() == 0;
}

PiLevelSurface::Outcome PiLevelSurface::buildGrid(const Request& request) {
    int dims[3];
    static_cast<const PbGrid3D*>(request.mesh)->getDim(dims[0], dims[1], dims[2]);
    bool flagAbove = request.towardsHigher != isFirstCellMirrored(request);
    PiGridLevelSurface grid(dims[0], dims[1], dims[2], request.field, request.level, flagAbove,
                            m_style);
    if (!grid.build(request.levelMayTouchNodes, m_points.nodes(), m_points.params(), m_coordIndex))
        return LEVEL_ON_NODE;
    m_skippedNaN = grid.hasNaN();
    return BUILT;
}

PiLevelSurface::Outcome PiLevelSurface::buildCellByCell(const Request& request) {
    const PbMesh3D& mesh = *request.mesh;
    if (!classifyNodes(request))
        return LEVEL_ON_NODE;
    PbCellFilterIterator cells(&mesh, request.filter, request.filterValues);
    for (int c = cells.first(); c < mesh.getNumCells(); c = cells.next()) {
        const PbCell* cell = mesh.getCell(c);
        unsigned char caseId = cell->getIsosurfCaseId(m_nodeFlags);
        if (caseId)
            addCellPart(*cell, cell->getMCcase(caseId));
    }
    // The tables serve one walk; their storage is not worth keeping.
    m_points.releaseTable();
    m_openFacets = decltype(m_openFacets)();
    return BUILT;
}

// Flags each node above the level (or below, to turn the faces over) and
// notes NaN values; a grid whose values are sums along its axes has them
// computed once here.
bool PiLevelSurface::classifyNodes(const Request& request) {
    const PbMesh3D& mesh = *request.mesh;
    int numNodes = mesh.getNumNodes();
    m_values = request.field.values;
    if (!m_values) {
        m_fieldValues.resize(numNodes);
        sumAxisTerms(static_cast<const PbGrid3D&>(mesh), request.field.axisTerms,
                     m_fieldValues.data());
        m_values = m_fieldValues.data();
    }
    bool flagAbove = request.towardsHigher != isFirstCellMirrored(request);
    m_nodeFlags.resize(numNodes);
    bool onLevel = false;
    for (int node = 0; node < numNodes; ++node) {
        float v = m_values[node];
        m_nodeFlags[node] = (v > m_level) == flagAbove;
        onLevel |= v == m_level;
        m_skippedNaN |= std::isnan(v);
    }
    return request.levelMayTouchNodes || !onLevel;
}

void PiLevelSurface::sumAxisTerms(const PbGrid3D& grid, const float* const terms[3],
                                  float* values) {
    int dims[3];
    grid.getDim(dims[0], dims[1], dims[2]);
    for (int i = 0, node = 0; i < dims[0]; ++i)
        for (int j = 0; j < dims[1]; ++j)
            for (int k = 0; k < dims[2]; ++k)
                values[node++] = (terms[0][i] + terms[1][j]) + terms[2][k];
}

bool PiLevelSurface::hasNaNNode(const PbCell& cell) const {
    const int* nodes = cell.getNodeIndexPtr();
    return std::any_of(nodes, nodes + cell.getNumNodes(),
                       [this](int node) { return std::isnan(m_values[node]); });
}

int PiLevelSurface::addSurfPoint(int node0, int node1) {
    return m_points.share(node0, node1, [this](int low, int high) {
        return (m_level - m_values[low]) / (m_values[high] - m_values[low]);
    });
}

void PiLevelSurface::addCellPart(const PbCell& cell, const PiMarchingCase* mc) {
    if (!mc || mc->getEdgeStripSet().empty())
        return;
    if (hasNaNNode(cell))
        return;
    const int* nodes = cell.getNodeIndexPtr();
    int edgePoints[PbCell::MAX_NODES * 2];
    std::fill(edgePoints, edgePoints + mc->getNumEdges(), -1);
    for (int edge : caseList(*mc, m_style)) {
        if (edge >= 0 && edgePoints[edge] < 0)
            edgePoints[edge] =
                addSurfPoint(nodes[mc->getEdgeNode0(edge)], nodes[mc->getEdgeNode1(edge)]);
        m_coordIndex.push_back(edge < 0 ? -1 : edgePoints[edge]);
    }
    endLastStrip(m_coordIndex, m_style);
    closeAmbiguousFacets(cell, *mc, edgePoints);
}

void PiLevelSurface::closeAmbiguousFacets(const PbCell& cell, const PiMarchingCase& mc,
                                          const int* edgePoints) {
    const int* nodes = cell.getNodeIndexPtr();
    for (int facet = 0; facet < mc.getNumFacets(); ++facet) {
        PiMarchingCase::FacetCrossing crossing = mc.getFacetCrossing(facet);
        if (crossing == PiMarchingCase::FACET_UNAMBIGUOUS)
            continue;
        const int* local = mc.getFacetNodes(facet);
        FacetKey key = {nodes[local[0]], nodes[local[1]], nodes[local[2]], nodes[local[3]]};
        std::sort(key.begin(), key.end());
        auto earlier = m_openFacets.find(key);
        if (earlier == m_openFacets.end()) {
            m_openFacets.emplace(key, crossing);
            continue;
        }
        if (earlier->second != crossing)
            appendClosingQuad(m_coordIndex, mc, facet, edgePoints, crossing, m_style);
        m_openFacets.erase(earlier);
    }
}

// A case's strips are separated by -1 but the last one is not ended.
void PiLevelSurface::endLastStrip(std::vector<int32_t>& coordIndex, Style style) {
    if (style == STRIPS)
        coordIndex.push_back(-1);
}

// The facet's cut points in the facet's node order face into the cell; the
// quadrangle faces the side of the nodes above the level, which is this
// cell's side when its case joins them across the facet.
void PiLevelSurface::appendClosingQuad(std::vector<int32_t>& coordIndex, const PiMarchingCase& mc,
                                       int facet, const int* edgePoints, int crossing,
                                       Style style) {
    const int* local = mc.getFacetNodes(facet);
    int points[4];
    for (int i = 0; i < 4; ++i)
        points[i] = edgePoints[mc.getEdgeBetween(local[i], local[(i + 1) % 4])];
    if (crossing == PiMarchingCase::FACET_SEPARATES_ABOVE)
        std::reverse(points, points + 4);
    if (style == STRIPS)
        coordIndex.insert(coordIndex.end(), {points[0], points[1], points[3], points[2], -1});
    else
        coordIndex.insert(coordIndex.end(), {points[0], points[1], points[2], points[3], -1});
}

int PiLevelSurface::getNumFaces() const {
    int faces = 0, run = 0;
    for (int32_t index : m_coordIndex) {
        if (index >= 0) {
            ++run;
            continue;
        }
        faces += m_style == STRIPS ? run - 2 : 1;
        run = 0;
    }
    return faces;
}

size_t PiLevelSurface::getMemorySize() const {
    return m_points.getMemorySize() + m_coordIndex.capacity() * sizeof(int32_t) +
           m_fieldValues.capacity() * sizeof(float) + m_nodeFlags.capacity() / 8;
}
