#pragma once
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/3Ddata/PbMeshArray.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/SbBox2f.h>
#include <Inventor/SbVec2f.h>

#include <vector>

class PbTriangleMesh2D;
class PiContouring;
class PoMeshFilled;
class SoMFVec3f;

// Base of the surface meshes: nodes with x and y coordinates and, when the
// mesh is a surface in space rather than flat in the plane z = 0, one z
// coordinate per node.  Cells are triangles or quadrangles.
class QUILLON_API PbMesh2D : public PbMesh {
public:
    PbMesh2D(const PbMesh2D& other);
    PbMesh2D& operator=(const PbMesh2D& other);
    ~PbMesh2D() override;

    // Box of the nodes in the xy plane (the box in space is
    // PbMesh::getBoundingBox).
    virtual SbBox2f getBoundingBox() const;
    // One z per node, or null for a flat mesh.
    virtual const float* getZcoord() const;
    // One point per node: x, y and z[node], where z is the given array, else
    // the mesh's own z coordinates, else 0.
    virtual void getNodesCoord(const float* z, SoMFVec3f& coords) const;
    // The boundary as polylines of node indices, one after the other in
    // limitNodes, with the number of nodes of each in limitSizes.  A closed
    // boundary repeats its first node at its end.  Each polyline starts with
    // the first side (in cell order, then side order) used by a single cell
    // and runs in that side's direction.
    virtual void getLimitIndices(PbArrayOfInt& limitNodes, PbArrayOfInt& limitSizes) const;
    // Whether getSidesNormals has normals to give (the mesh has cells).
    virtual int hasSidesNormals() const;
    // One unit normal per entry of limitNodes, in the xy plane and pointing
    // out of the mesh: the mean direction of the outward normals of the
    // boundary sides that meet at that node ((0, 0, 0) for a node off the
    // boundary).  normals points to storage of the mesh, valid until the
    // next call.
    virtual void getSidesNormals(SbVec3f*& normals, const PbArrayOfInt& limitNodes) const;
    // Unit normal of cell 0 (right-hand rule over its node order); (0, 0, 1)
    // for a mesh without cells.
    virtual SbVec3f getFirstCellNormal() const;

    // Hands the mesh to the library's contouring, as its own kind, with
    // one z per node (or null for z = 0).  Does nothing here.
    virtual void meshContouring(PiContouring* contouring, const float* zValues) const;
    // Draws the mesh through the filled representation, by the kit's
    // operation for the mesh's kind.  Does nothing here.
    virtual void meshFilled(PoMeshFilled* kit) const;

    // Sums of the cells' volumes (0 for surface cells) and areas.
    float getVolume() const override;
    float getArea() const override;
    void print(FILE* fp) const override;

    // Replaces the z coordinates (numNodes values; null makes the mesh
    // flat).  A duplicating mesh copies them.
    void setZCoord(const float* z);
    // Puts other z coordinates in place for a while, for instance a value set
    // drawn as heights, and restores the previous ones.  They are taken as by
    // setZCoord, but the connected kits are not told.
    void pushZCoord(const float* z);
    void popZCoord();

    // Builds a triangle mesh of this mesh's domain whose triangles follow
    // fault lines, by a constrained Delaunay triangulation in the xy plane
    // of the nodes, the boundary sides and the fault polylines.
    // numFaultLines polylines are given, the k-th with numFaultPoints[k]
    // points (at least 2), taken one after the other from faultPoints.
    // Without splitting, every fault segment becomes a chain of triangle
    // sides as it is (a node is added only where faults cross each other or
    // the boundary); with splitFaultSegments, fault segments are also cut at
    // their midpoints until they are conforming Delaunay edges.  Boundary
    // sides are never cut.
    //
    // The result duplicates its data and is the caller's to delete.  Its
    // first getNumNodes() nodes are this mesh's nodes, in order; the fault
    // nodes follow (see PbTriangleMesh2D::evaluateFaultNode).  The z
    // coordinates and the value, vector and string sets are carried over,
    // the sets found under the indices 0 to count - 1 as in scene files:
    // nodes keep their values, fault nodes get values interpolated in this
    // mesh (strings: that of the cell node with the largest weight), and
    // per-cell values go to each triangle from the cell containing its
    // centre.  Returns null after posting an error when the input is invalid
    // or the triangulation fails.
    PbTriangleMesh2D* getFaultMesh(int numFaultLines, const int* numFaultPoints,
                                   const SbVec2f* faultPoints,
                                   SbBool splitFaultSegments = FALSE) const;

protected:
    explicit PbMesh2D(int isDataDuplicate);

    struct CellSide {
        int cell;
        int from;
        int to;
    };

    void updateBoundingBox() const override;
    // Normal of a triangle or quadrangle cell by the right-hand rule over its
    // node order (over the diagonals for a quadrangle); not normalised.
    static SbVec3f getCellNormal(const PbCell& cell);
    // Node indices of a cell (3 or 4).
    int getCellNodes(int cell, int nodes[4]) const;
    // All cell sides, grouped by the pair of nodes that they join; the groups
    // come in the order of their first side (cell order, then side order)
    // and each side is directed as in its cell.
    std::vector<std::vector<CellSide>> getSideGroups() const;
    // Sides that belong to one cell only, in cell order then side order.
    std::vector<CellSide> getBoundarySides() const;
    // Takes the z coordinates without notifying: for geometry setters, which
    // notify once at the end.
    void storeZCoord(const float* z);
    bool hasZCoord() const { return m_z.get() != nullptr; }
    float getZ(int node) const { return m_z.get() ? m_z[node] : 0.0f; }

private:
    float sumOverCells(float (PbCell::*measure)() const) const;

    PbMeshArray<float> m_z;
    std::vector<PbMeshArray<float>> m_pushedZ;
    mutable std::vector<SbVec3f> m_sidesNormals;
};
