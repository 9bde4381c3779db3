#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbBase.h>

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>

#include <cstdio>
#include <initializer_list>
#include <vector>

class PbArrayOfInt;
class PbArrayOfFloat;
class PbMesh;
class PiMarchingCase;
class SbPlane;

// A cell of a mesh: the topology and coordinates of one of the mesh's cells,
// with the geometric questions that algorithms ask of it (nodes, edges and
// facets by local number, box, centre, point location, interpolation,
// orientation, isosurface case).
//
// Filling a cell.  A mesh owns one cell object of each kind it uses and
// refills it on every getCell() call with one of the set() forms below; a
// cell returned by a mesh is therefore valid only until the next getCell()
// call on that mesh.
//   - set(index, nodeIndex, x, y, z): the coordinates of local node i are
//     read at x[nodeIndex[i]], y[nodeIndex[i]], z[nodeIndex[i]].  Pass a
//     null z for a surface mesh without z coordinates: the nodes are then
//     stored with z = 0 and the surface cells locate points in the plane.
//   - set(index, nodeIndex, coords, hasZ): coords holds the getNumNodes()
//     coordinates already gathered in local node order (grids whose
//     coordinates are computed, such as regular or polar grids, use this).
//   - PbPixelCell::setBox and PbVoxelCell::setBox for axis-aligned cells.
// The nodeIndex array is kept, not copied: it must stay unchanged as long
// as the cell is used (grids pass their getCellNodeIds buffer).  Every form
// recomputes the kind's own state (projection matrices, cached inverses).
class QUILLON_API PbCell : public PbBase {
public:
    enum { MAX_NODES = 8 };

    // The static description of a cell kind: counts, edge and facet tables
    // and reference node positions (parametric coordinates).  A triangular
    // facet has -1 in its fourth slot.
    struct Shape {
        int numFacets;
        int numEdges;
        int numNodes;
        const int (*edges)[2];
        const int (*facets)[4];
        const float (*reference)[3];
    };

    PbCell(const PbCell& other) = default;
    PbCell& operator=(const PbCell& other) = default;
    ~PbCell() override;

    virtual float getLongestEdgeLength() const;
    virtual SbBox3f getBoundingBox() const;
    // Box of the nodes, in the argument order of SbBox3f::getBounds.
    virtual void getBounds(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax,
                           float& zmax) const;
    // Mean of the node coordinates.
    virtual SbVec3f getCenter() const;
    virtual float getVolume() const = 0;
    virtual float getArea() const = 0;
    // Mesh node indices of an edge or a facet; an empty list for an index
    // outside the kind's range.
    virtual void getNodesIndexOfEdge(int edge, PbArrayOfInt& nodes) const;
    virtual void getNodesIndexOfFacet(int facet, PbArrayOfInt& nodes) const;
    // The edge's pair of local node numbers in the kind's static table, or
    // null for an edge outside the kind's range.
    virtual const int* getNodesLocalIndexOfEdge(int edge) const;
    virtual void getNodesLocalIndexOfEdge(int edge, PbArrayOfInt& nodes) const;
    virtual void getNodesLocalIndexOfFacet(int facet, PbArrayOfInt& nodes) const;
    // Returns 1 when the point lies in the cell enlarged by tolerance (in
    // parametric units), 0 otherwise; pcoord receives the parametric
    // coordinates in both cases.
    virtual int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const = 0;
    // Interpolation weights of the local nodes at pcoord (getNumNodes()
    // floats are written).
    virtual void getWeight(const SbVec3f& pcoord, float* weights) const = 0;
    // Values interpolated at pcoord; values is indexed by mesh node index.
    virtual SbVec3f getValue(const SbVec3f& pcoord, const SbVec3f* values) const;
    virtual float getValue(const SbVec3f& pcoord, const float* values) const;
    virtual void print(FILE* fp) const;
    // 1 when the nodes are in the reference order, 0 when mirrored.
    virtual int getOrdering() const;
    // Lists the edges cut by the plane: a node is on the plane's positive
    // side when its signed distance is >= 0, and an edge is cut when its two
    // nodes lie on different sides.  For each cut edge, in edge order,
    // cutEdges receives the local edge number, cutEdgeNodes the mesh node
    // indices of its two ends (in the edge table's order) and cutRatios, when
    // given, the position of the cut along the edge from its first node
    // (0 at the first node, 1 at the second).  The lists are emptied first.
    virtual void getEdgesCrossingPlane(const SbPlane& plane, PbArrayOfInt& cutEdges,
                                       PbArrayOfInt& cutEdgeNodes, PbArrayOfFloat* cutRatios) const;
    // The marching case of the cell's kind for a case id; null for surface
    // cells.
    virtual const PiMarchingCase* getMCcase(unsigned char caseId) const;
    // Case id for a node classification indexed by mesh node index: bit i
    // is set when nodeFlags[nodeIndex[i]] is true; a case with every bit set
    // is turned into 0.  Always 0 for surface cells.
    virtual unsigned char getIsosurfCaseId(const std::vector<bool>& nodeFlags) const = 0;

    int getIndex() const { return m_index; }
    int getNumNodes() const { return m_numNodes; }
    int getNumEdges() const { return m_numEdges; }
    int getNumFacets() const { return m_numFacets; }
    // The mesh that fills this cell (may be null for a stand-alone cell).
    const PbMesh* getOwner() const { return m_owner; }

    // Mesh node index of a local node; -1 for a local node out of range.
    int getNodeIndex(int localNode) const;
    const int* getNodeIndexPtr() const { return m_nodeIndex; }
    // All mesh node indices in local order (the list is emptied first).
    void getNodesIndex(PbArrayOfInt& nodes) const;
    SbVec3f getNodeCoord(int localNode) const;
    // Sum over the local nodes i of weights[i] * values[nodeIndex[i]].
    float getValue(const float* weights, const float* values) const;
    SbVec3f getValue(const float* weights, const SbVec3f* values) const;

    // Stores the cell index and the node index pointer (not a copy); the
    // coordinates are left as they are.
    void setTopology(int index, const int* nodeIndex);
    void set(int index, const int* nodeIndex, const float* x, const float* y, const float* z);
    void set(int index, const int* nodeIndex, const SbVec3f* coords, bool hasZ = true);

protected:
    PbCell(const Shape& shape, const PbMesh* owner);

    // Recomputes the kind's own state after the node coordinates changed.
    // hasZ is false for a surface mesh without z coordinates.
    virtual void nodesChanged(bool hasZ);

    const SbVec3f& coord(int localNode) const { return m_nodeCoord[localNode]; }
    int facetSize(int facet) const;
    const int* facetNodes(int facet) const { return m_shape->facets[facet]; }
    // Area of the planar or skew polygon of 3 or 4 local nodes: half the
    // length of the cross product of its edges (triangle) or diagonals.
    float polygonArea(const int* localNodes, int count) const;
    // Fills the cell with the reference nodes scaled by size and moved to
    // minCorner (axis-aligned cells).
    void setFromBox(int index, const int* nodeIndex, const SbVec3f& minCorner, const SbVec3f& size);
    static bool isInRange(float value, float tolerance) {
        return value >= -tolerance && value <= 1.0f + tolerance;
    }
    // Writes text followed by " %f" for each value and a new line.
    static void printFloats(FILE* fp, const char* text, std::initializer_list<float> values);

private:
    // Check a local node / edge / facet number or the inputs of an
    // interpolation, and post an error naming the method when they are bad.
    bool checkLocalNode(const char* method, int localNode) const;
    bool checkEdge(const char* method, int edge) const;
    bool checkFacet(const char* method, int facet) const;
    bool checkValueInput(const char* method, const void* weights, const void* values) const;

    const Shape* m_shape;
    const PbMesh* m_owner;
    int m_numFacets;
    int m_numEdges;
    int m_numNodes;
    int m_index = -1;
    const int* m_nodeIndex = nullptr;
    SbVec3f m_nodeCoord[MAX_NODES];
    mutable SbBox3f m_boundingBox;
};
