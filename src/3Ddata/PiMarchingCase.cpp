#include "3Ddata/PiMarchingCase.h"

#include <algorithm>
#include <map>

namespace {

// Calls fn(begin, end) for every run of values between -1 separators.
template <typename List, typename Fn> void forEachRun(List& list, Fn fn) {
    auto begin = list.begin();
    while (begin != list.end()) {
        auto end = std::find(begin, list.end(), -1);
        fn(begin, end);
        begin = end == list.end() ? end : end + 1;
    }
}

} // namespace

PiMarchingCase::PiMarchingCase(const Geometry& geometry, unsigned char baseNumber, unsigned char id)
    : m_geometry(&geometry), m_id(id), m_baseNumber(baseNumber) {}

std::unique_ptr<PiMarchingCase> PiMarchingCase::getRotX(int count) const {
    return rot(count, m_geometry->turns[0]);
}

std::unique_ptr<PiMarchingCase> PiMarchingCase::getRotY(int count) const {
    return rot(count, m_geometry->turns[1]);
}

std::unique_ptr<PiMarchingCase> PiMarchingCase::getRotZ(int count) const {
    return rot(count, m_geometry->turns[2]);
}

std::unique_ptr<PiMarchingCase> PiMarchingCase::getReverse() const {
    std::unique_ptr<PiMarchingCase> reverse = clone();
    reverse->m_id = getRevertId();
    reverse->revertStripSet();
    reverse->revertOptQuad();
    reverse->deriveLists();
    return reverse;
}

unsigned char PiMarchingCase::getRevertId() const {
    return static_cast<unsigned char>(~m_id & ((1 << getNumNodes()) - 1));
}

void PiMarchingCase::revertOptQuad() {
    forEachRun(m_optQuad, [](auto begin, auto end) { std::reverse(begin, end); });
}

void PiMarchingCase::setStripSet(const std::vector<int>& edgeStrips) {
    m_edgeStripSet = edgeStrips;
    deriveLists();
}

void PiMarchingCase::setOptQuad(const std::vector<int>& pointPositions) {
    std::vector<int> points;
    std::copy_if(m_edgeStripSet.begin(), m_edgeStripSet.end(), std::back_inserter(points),
                 [](int edge) { return edge >= 0; });
    m_optQuad.clear();
    for (int position : pointPositions)
        m_optQuad.push_back(position < 0 ? -1 : points.at(position));
}

std::unique_ptr<PiMarchingCase> PiMarchingCase::rot(int count, const int* nodePermutation) const {
    std::unique_ptr<PiMarchingCase> rotated = clone();
    if (nodePermutation) {
        for (int turn = 0; turn < count; ++turn)
            rotated->rotateOnce(nodePermutation);
        rotated->deriveLists();
    }
    return rotated;
}

// Moves the node bits and the cut points (rotateIsoPts) through one turn.
void PiMarchingCase::rotateOnce(const int* nodePermutation) {
    unsigned int id = 0;
    for (int node = 0; node < getNumNodes(); ++node)
        if (m_id & (1u << node))
            id |= 1u << nodePermutation[node];
    m_id = static_cast<unsigned char>(id);
    auto turnEdge = [&](int edge) {
        if (edge < 0)
            return edge;
        return getEdgeBetween(nodePermutation[getEdgeNode0(edge)],
                              nodePermutation[getEdgeNode1(edge)]);
    };
    std::transform(m_edgeStripSet.begin(), m_edgeStripSet.end(), m_edgeStripSet.begin(), turnEdge);
    std::transform(m_optQuad.begin(), m_optQuad.end(), m_optQuad.begin(), turnEdge);
}

int PiMarchingCase::getEdgeBetween(int node0, int node1) const {
    for (int edge = 0; edge < getNumEdges(); ++edge) {
        int a = getEdgeNode0(edge);
        int b = getEdgeNode1(edge);
        if ((a == node0 && b == node1) || (a == node1 && b == node0))
            return edge;
    }
    return -1;
}

// Flips every strip.  An odd strip is simply reversed; reversing a strip of
// even length would keep its orientation, so its vertices are swapped in
// pairs instead, which flips the quadrangles of the strip (each is split by
// its other diagonal).
void PiMarchingCase::revertStripSet() {
    forEachRun(m_edgeStripSet, [](auto begin, auto end) {
        if ((end - begin) % 2) {
            std::reverse(begin, end);
            return;
        }
        for (auto it = begin; it != end; it += 2)
            std::iter_swap(it, it + 1);
    });
}

// One triangle per strip vertex after the second, every other one turned so
// that all keep the strip's orientation.
void PiMarchingCase::setFaceSet() {
    m_edgeFaceSet.clear();
    forEachRun(m_edgeStripSet, [this](auto begin, auto end) {
        for (auto it = begin; end - it >= 3; ++it) {
            bool odd = (it - begin) % 2;
            m_edgeFaceSet.insert(m_edgeFaceSet.end(),
                                 {odd ? it[1] : it[0], odd ? it[0] : it[1], it[2], -1});
        }
    });
}

void PiMarchingCase::setNodeStripSet() {
    expressByNodes(m_edgeStripSet, m_nodeStripSet);
}

void PiMarchingCase::setNodeFaceSet() {
    expressByNodes(m_edgeFaceSet, m_nodeFaceSet);
}

void PiMarchingCase::expressByNodes(const std::vector<int>& edges, std::vector<int>& nodes) const {
    nodes.clear();
    for (int edge : edges) {
        if (edge < 0)
            nodes.push_back(-1);
        else
            nodes.insert(nodes.end(), {getEdgeNode0(edge), getEdgeNode1(edge)});
    }
}

// A facet's crossing follows from the triangles' sides that lie on it and
// belong to one triangle only: the surface's trace on the facet.  A node
// above the level is cut off on its own when such a side joins the cut
// points of its two facet edges.
void PiMarchingCase::setFacetCrossings() {
    m_facetCrossings.assign(getNumFacets(), FACET_UNAMBIGUOUS);
    std::map<std::pair<int, int>, int> sideUses;
    for (size_t i = 0; i + 3 < m_edgeFaceSet.size(); i += 4)
        for (int corner = 0; corner < 3; ++corner) {
            int a = m_edgeFaceSet[i + corner], b = m_edgeFaceSet[i + (corner + 1) % 3];
            ++sideUses[std::minmax(a, b)];
        }
    auto isAbove = [this](int node) { return (m_id >> node) & 1; };
    for (int facet = 0; facet < getNumFacets(); ++facet) {
        const int* q = getFacetNodes(facet);
        if (q[3] < 0 || isAbove(q[0]) != isAbove(q[2]) || isAbove(q[1]) != isAbove(q[3]) ||
            isAbove(q[0]) == isAbove(q[1]))
            continue;
        int above = isAbove(q[0]) ? 0 : 1;
        int before = getEdgeBetween(q[(above + 3) % 4], q[above]);
        int after = getEdgeBetween(q[above], q[(above + 1) % 4]);
        auto side = sideUses.find(std::minmax(before, after));
        bool separates = side != sideUses.end() && side->second == 1;
        m_facetCrossings[facet] = separates ? FACET_SEPARATES_ABOVE : FACET_JOINS_ABOVE;
    }
}

void PiMarchingCase::deriveLists() {
    setFaceSet();
    setNodeStripSet();
    setNodeFaceSet();
    setFacetCrossings();
}
