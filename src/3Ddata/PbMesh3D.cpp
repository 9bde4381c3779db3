#include <Quillon/3Ddata/PbMesh3D.h>

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PoMeshCrossSection.h>

#include <algorithm>
#include <array>
#include <vector>

namespace {

// A facet of a cell, keyed by its sorted node indices so that the two
// sides of a shared facet compare equal.
struct Facet {
    std::array<int, 4> key;
    float area;
    bool operator<(const Facet& other) const { return key < other.key; }
};

float facetArea(const PbMesh& mesh, const PbArrayOfInt& nodes) {
    auto at = [&](int n) { return mesh.getNodeCoord(nodes[n]); };
    if (nodes.getNum() == 3)
        return 0.5f * (at(1) - at(0)).cross(at(2) - at(0)).length();
    return 0.5f * (at(2) - at(0)).cross(at(3) - at(1)).length();
}

Facet makeFacet(const PbMesh& mesh, const PbArrayOfInt& nodes) {
    Facet facet{{-1, -1, -1, -1}, facetArea(mesh, nodes)};
    std::copy(nodes.get(), nodes.get() + std::min(nodes.getNum(), 4), facet.key.begin());
    std::sort(facet.key.begin(), facet.key.end());
    return facet;
}

} // namespace

float PbMesh3D::getVolume() const {
    double volume = 0.0;
    for (int c = 0; c < m_numCells; ++c)
        volume += getCell(c)->getVolume();
    return static_cast<float>(volume);
}

float PbMesh3D::getArea() const {
    std::vector<Facet> facets;
    PbArrayOfInt nodes;
    for (int c = 0; c < m_numCells; ++c) {
        const PbCell* cell = getCell(c);
        for (int f = 0; f < cell->getNumFacets(); ++f) {
            cell->getNodesIndexOfFacet(f, nodes);
            facets.push_back(makeFacet(*this, nodes));
        }
    }
    std::sort(facets.begin(), facets.end());
    double area = 0.0;
    for (size_t first = 0, last; first < facets.size(); first = last) {
        for (last = first + 1; last < facets.size() && facets[last].key == facets[first].key;)
            ++last;
        if (last - first == 1)
            area += facets[first].area;
    }
    return static_cast<float>(area);
}

float PbMesh3D::getLongestEdgeLength() const {
    float longest = 0.0f;
    for (int c = 0; c < m_numCells; ++c)
        longest = std::max(longest, getCell(c)->getLongestEdgeLength());
    return longest;
}

int PbMesh3D::isCrossSectionOptimal(const SbPlane&) const {
    return 0;
}

void PbMesh3D::meshCrossSection(PoMeshCrossSection* kit) const {
    kit->crossSectionCells(this);
}
