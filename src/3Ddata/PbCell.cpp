#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/graph/PbArrayOfFloat.h>
#include <Quillon/graph/PbArrayOfInt.h>
#include <Quillon/graph/PoDebugError.h>

#include "platform/SbLocaleString.h"

#include <Inventor/SbPlane.h>

#include <algorithm>

namespace {

SbString formatFloat(float value) {
    return SbLocaleString::toString_l("%f", value);
}

} // namespace

PbCell::PbCell(const Shape& shape, const PbMesh* owner)
    : m_shape(&shape), m_owner(owner), m_numFacets(shape.numFacets), m_numEdges(shape.numEdges),
      m_numNodes(shape.numNodes) {
    for (int node = 0; node < m_numNodes; ++node)
        m_nodeCoord[node].setValue(shape.reference[node]);
}

PbCell::~PbCell() = default;

float PbCell::getLongestEdgeLength() const {
    float longest = 0.0f;
    for (int edge = 0; edge < m_numEdges; ++edge) {
        const int* ends = m_shape->edges[edge];
        longest = std::max(longest, (coord(ends[1]) - coord(ends[0])).length());
    }
    return longest;
}

SbBox3f PbCell::getBoundingBox() const {
    m_boundingBox.makeEmpty();
    for (int node = 0; node < m_numNodes; ++node)
        m_boundingBox.extendBy(coord(node));
    return m_boundingBox;
}

void PbCell::getBounds(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax,
                       float& zmax) const {
    getBoundingBox().getBounds(xmin, ymin, zmin, xmax, ymax, zmax);
}

SbVec3f PbCell::getCenter() const {
    SbVec3f sum(0.0f, 0.0f, 0.0f);
    for (int node = 0; node < m_numNodes; ++node)
        sum += coord(node);
    return sum / static_cast<float>(m_numNodes);
}

void PbCell::getNodesIndexOfEdge(int edge, PbArrayOfInt& nodes) const {
    nodes.empty();
    if (!checkEdge("PbCell::getNodesIndexOfEdge", edge))
        return;
    for (int end : m_shape->edges[edge])
        nodes.add(getNodeIndex(end));
}

void PbCell::getNodesIndexOfFacet(int facet, PbArrayOfInt& nodes) const {
    nodes.empty();
    if (!checkFacet("PbCell::getNodesIndexOfFacet", facet))
        return;
    for (int i = 0; i < facetSize(facet); ++i)
        nodes.add(getNodeIndex(facetNodes(facet)[i]));
}

const int* PbCell::getNodesLocalIndexOfEdge(int edge) const {
    if (!checkEdge("PbCell::getNodesLocalIndexOfEdge", edge))
        return nullptr;
    return m_shape->edges[edge];
}

void PbCell::getNodesLocalIndexOfEdge(int edge, PbArrayOfInt& nodes) const {
    nodes.empty();
    if (!checkEdge("PbCell::getNodesLocalIndexOfEdge", edge))
        return;
    for (int end : m_shape->edges[edge])
        nodes.add(end);
}

void PbCell::getNodesLocalIndexOfFacet(int facet, PbArrayOfInt& nodes) const {
    nodes.empty();
    if (!checkFacet("PbCell::getNodesLocalIndexOfFacet", facet))
        return;
    for (int i = 0; i < facetSize(facet); ++i)
        nodes.add(facetNodes(facet)[i]);
}

SbVec3f PbCell::getValue(const SbVec3f& pcoord, const SbVec3f* values) const {
    float weights[MAX_NODES];
    getWeight(pcoord, weights);
    return getValue(weights, values);
}

float PbCell::getValue(const SbVec3f& pcoord, const float* values) const {
    float weights[MAX_NODES];
    getWeight(pcoord, weights);
    return getValue(weights, values);
}

void PbCell::print(FILE* fp) const {
    fprintf(fp, "=====================print cell informations ==================== \n");
    fprintf(fp, "PbCell:: m_numFaces = %d\n", m_numFacets);
    fprintf(fp, "PbCell:: m_numEdges = %d\n", m_numEdges);
    fprintf(fp, "PbCell:: m_numNodes = %d\n", m_numNodes);
    fprintf(fp, "PbCell:: m_index = %d\n", m_index);
    for (int node = 0; node < m_numNodes; ++node) {
        const SbVec3f& p = coord(node);
        SbString text;
        text.sprintf("PbCell:: node %d :", m_nodeIndex ? m_nodeIndex[node] : -1);
        printFloats(fp, text.getString(), {p[0], p[1], p[2]});
    }
}

int PbCell::getOrdering() const {
    return 1;
}

void PbCell::getEdgesCrossingPlane(const SbPlane& plane, PbArrayOfInt& cutEdges,
                                   PbArrayOfInt& cutEdgeNodes, PbArrayOfFloat* cutRatios) const {
    cutEdges.empty();
    cutEdgeNodes.empty();
    if (cutRatios)
        cutRatios->empty();
    for (int edge = 0; edge < m_numEdges; ++edge) {
        const int* ends = m_shape->edges[edge];
        float d0 = plane.getDistance(coord(ends[0]));
        float d1 = plane.getDistance(coord(ends[1]));
        if ((d0 >= 0.0f) == (d1 >= 0.0f))
            continue;
        cutEdges.add(edge);
        cutEdgeNodes.add(getNodeIndex(ends[0]));
        cutEdgeNodes.add(getNodeIndex(ends[1]));
        if (cutRatios)
            cutRatios->add(d0 / (d0 - d1));
    }
}

const PiMarchingCase* PbCell::getMCcase(unsigned char) const {
    return nullptr;
}

int PbCell::getNodeIndex(int localNode) const {
    if (!checkLocalNode("PbCell::getNodeIndex", localNode) || !m_nodeIndex)
        return -1;
    return m_nodeIndex[localNode];
}

void PbCell::getNodesIndex(PbArrayOfInt& nodes) const {
    nodes.empty();
    if (!m_nodeIndex)
        return;
    for (int node = 0; node < m_numNodes; ++node)
        nodes.add(m_nodeIndex[node]);
}

SbVec3f PbCell::getNodeCoord(int localNode) const {
    if (!checkLocalNode("PbCell::getNodeCoord", localNode))
        return SbVec3f(0.0f, 0.0f, 0.0f);
    return coord(localNode);
}

float PbCell::getValue(const float* weights, const float* values) const {
    if (!checkValueInput("PbCell::getValue", weights, values))
        return 0.0f;
    float sum = 0.0f;
    for (int node = 0; node < m_numNodes; ++node)
        sum += weights[node] * values[m_nodeIndex[node]];
    return sum;
}

SbVec3f PbCell::getValue(const float* weights, const SbVec3f* values) const {
    SbVec3f sum(0.0f, 0.0f, 0.0f);
    if (!checkValueInput("PbCell::getValue", weights, values))
        return sum;
    for (int node = 0; node < m_numNodes; ++node)
        sum += weights[node] * values[m_nodeIndex[node]];
    return sum;
}

void PbCell::setTopology(int index, const int* nodeIndex) {
    m_index = index;
    m_nodeIndex = nodeIndex;
}

void PbCell::set(int index, const int* nodeIndex, const float* x, const float* y, const float* z) {
    if (!nodeIndex || !x || !y) {
        PoDebugError::post("PbCell::set", "the node indices and the x and y coordinates must "
                                          "not be null");
        return;
    }
    setTopology(index, nodeIndex);
    for (int node = 0; node < m_numNodes; ++node) {
        int meshNode = nodeIndex[node];
        m_nodeCoord[node].setValue(x[meshNode], y[meshNode], z ? z[meshNode] : 0.0f);
    }
    nodesChanged(z != nullptr);
}

void PbCell::set(int index, const int* nodeIndex, const SbVec3f* coords, bool hasZ) {
    if (!coords) {
        PoDebugError::post("PbCell::set", "the node coordinates must not be null");
        return;
    }
    setTopology(index, nodeIndex);
    for (int node = 0; node < m_numNodes; ++node)
        m_nodeCoord[node].setValue(coords[node][0], coords[node][1], hasZ ? coords[node][2] : 0.0f);
    nodesChanged(hasZ);
}

void PbCell::nodesChanged(bool) {}

void PbCell::setFromBox(int index, const int* nodeIndex, const SbVec3f& minCorner,
                        const SbVec3f& size) {
    SbVec3f coords[MAX_NODES];
    for (int node = 0; node < m_numNodes; ++node) {
        const float* reference = m_shape->reference[node];
        coords[node].setValue(minCorner[0] + reference[0] * size[0],
                              minCorner[1] + reference[1] * size[1],
                              minCorner[2] + reference[2] * size[2]);
    }
    set(index, nodeIndex, coords);
}

void PbCell::printFloats(FILE* fp, const char* text, std::initializer_list<float> values) {
    fprintf(fp, "%s", text);
    for (float value : values)
        fprintf(fp, " %s", formatFloat(value).getString());
    fprintf(fp, "\n");
}

int PbCell::facetSize(int facet) const {
    return m_shape->facets[facet][3] < 0 ? 3 : 4;
}

float PbCell::polygonArea(const int* localNodes, int count) const {
    const SbVec3f& p0 = coord(localNodes[0]);
    const SbVec3f& p1 = coord(localNodes[1]);
    const SbVec3f& p2 = coord(localNodes[2]);
    if (count == 3)
        return 0.5f * (p1 - p0).cross(p2 - p0).length();
    return 0.5f * (p2 - p0).cross(coord(localNodes[3]) - p1).length();
}

bool PbCell::checkLocalNode(const char* method, int localNode) const {
    if (localNode >= 0 && localNode < m_numNodes)
        return true;
    PoDebugError::post(method, "local node %d is out of range: the cell has %d nodes", localNode,
                       m_numNodes);
    return false;
}

bool PbCell::checkEdge(const char* method, int edge) const {
    if (edge >= 0 && edge < m_numEdges)
        return true;
    PoDebugError::post(method, "edge %d is out of range: the cell has %d edges", edge, m_numEdges);
    return false;
}

bool PbCell::checkFacet(const char* method, int facet) const {
    if (facet >= 0 && facet < m_numFacets)
        return true;
    PoDebugError::post(method, "facet %d is out of range: the cell has %d facets", facet,
                       m_numFacets);
    return false;
}

bool PbCell::checkValueInput(const char* method, const void* weights, const void* values) const {
    if (!m_nodeIndex) {
        PoDebugError::post(method, "the cell has no node indices: it was not filled by a mesh");
        return false;
    }
    if (!weights || !values) {
        PoDebugError::post(method, "the weights and the values must not be null");
        return false;
    }
    return true;
}
