#pragma once
#include <memory>
#include <vector>

// One marching case of a volume cell kind: for one classification of the
// cell's nodes (bit i of the id set when node i is above the level), which
// edges are cut and how their cut points form the surface.
//
// The surface is held as triangle strips of edge indices (strips separated
// by -1; every triangle's front, counter-clockwise, faces the nodes above
// the level),
// with the same triangles as a face set (three edges and -1 per triangle).
// The node forms replace each edge by its two end nodes.  The optional
// quadrangles are the cut points of the faces whose classification is
// ambiguous (two diagonal nodes above), an alternative tessellation; they
// are held as edge indices too.
class PiMarchingCase {
public:
    // The fixed description of a case kind: node, edge and facet counts,
    // the edges' end nodes, the facets' nodes (-1 in the fourth slot of a
    // triangle) and the node permutations of the quarter turns about X, Y
    // and Z (entry i is the image of node i; null when the kind has no such
    // turn).
    struct Geometry {
        int numNodes;
        int numEdges;
        int numFacets;
        const int (*edges)[2];
        const int (*facets)[4];
        const int* turns[3];
    };

    // How the surface crosses a quadrangular facet whose diagonal nodes lie
    // on the same side (an ambiguous facet): around each of the two nodes
    // above the level separately, or around the two nodes below, leaving
    // those above joined across the facet.  Two cells sharing such a facet
    // whose cases cross it differently leave a quadrangular hole there.
    enum FacetCrossing { FACET_UNAMBIGUOUS = 0, FACET_SEPARATES_ABOVE = 1, FACET_JOINS_ABOVE = 2 };

    virtual ~PiMarchingCase() = default;

    // New cases: this one turned by count quarter turns about an axis of the
    // kind (a copy when the kind has no turn about that axis), and the
    // complement, with every node's side swapped and every triangle flipped.
    virtual std::unique_ptr<PiMarchingCase> getRotX(int count) const;
    virtual std::unique_ptr<PiMarchingCase> getRotY(int count) const;
    virtual std::unique_ptr<PiMarchingCase> getRotZ(int count) const;
    virtual std::unique_ptr<PiMarchingCase> getReverse() const;
    virtual int getNumNodes() const { return m_geometry->numNodes; }
    virtual int getEdgeNode0(int edge) const { return m_geometry->edges[edge][0]; }
    virtual int getEdgeNode1(int edge) const { return m_geometry->edges[edge][1]; }
    // The id of the complement: every node bit inverted.
    virtual unsigned char getRevertId() const;
    // Flips every optional quadrangle.
    virtual void revertOptQuad();

    unsigned char getId() const { return m_id; }
    void setId(unsigned char id) { m_id = id; }
    unsigned char getBaseNumber() const { return m_baseNumber; }
    int getNumEdges() const { return m_geometry->numEdges; }
    int getNumFacets() const { return m_geometry->numFacets; }
    const int* getFacetNodes(int facet) const { return m_geometry->facets[facet]; }
    // The local edge between two nodes, or -1.
    int getEdgeBetween(int node0, int node1) const;
    FacetCrossing getFacetCrossing(int facet) const {
        return static_cast<FacetCrossing>(m_facetCrossings[facet]);
    }

    const std::vector<int>& getEdgeStripSet() const { return m_edgeStripSet; }
    const std::vector<int>& getEdgeFaceSet() const { return m_edgeFaceSet; }
    const std::vector<int>& getNodeStripSet() const { return m_nodeStripSet; }
    const std::vector<int>& getNodeFaceSet() const { return m_nodeFaceSet; }
    const std::vector<int>& getOptQuad() const { return m_optQuad; }

    // Sets the strips (edge indices, strips separated by -1) and derives
    // the face set and the node forms.
    void setStripSet(const std::vector<int>& edgeStrips);
    // Sets the optional quadrangles from positions in the strip set's list
    // of cut points (counted without the separators), quadrangles
    // separated by -1; the positions are turned into edge indices.
    void setOptQuad(const std::vector<int>& pointPositions);

protected:
    PiMarchingCase(const Geometry& geometry, unsigned char baseNumber, unsigned char id);
    PiMarchingCase(const PiMarchingCase& other) = default;

    virtual std::unique_ptr<PiMarchingCase> clone() const = 0;

private:
    std::unique_ptr<PiMarchingCase> rot(int count, const int* nodePermutation) const;
    void rotateOnce(const int* nodePermutation);
    void revertStripSet();
    void setFaceSet();
    void setNodeStripSet();
    void setNodeFaceSet();
    void setFacetCrossings();
    // Replaces each edge by its two end nodes; separators stay.
    void expressByNodes(const std::vector<int>& edges, std::vector<int>& nodes) const;
    void deriveLists();

    const Geometry* m_geometry;
    unsigned char m_id;
    unsigned char m_baseNumber;
    std::vector<int> m_edgeStripSet;
    std::vector<int> m_edgeFaceSet;
    std::vector<int> m_nodeStripSet;
    std::vector<int> m_nodeFaceSet;
    std::vector<int> m_optQuad;
    std::vector<unsigned char> m_facetCrossings;
};
