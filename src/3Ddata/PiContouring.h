#pragma once
#include "3Ddata/PiIsolines.h"
#include "3Ddata/PiVolumwright.h"

#include <Inventor/SbVec3f.h>

#include <memory>
#include <vector>

class PbCartesianGrid2D;
class PbDataMapping;
class PbGrid2D;
class PbIndexedMesh2D;
class PbMesh2D;
class PbParalCartesianGrid2D;
class PbPolarGrid2D;
class PbRegularCartesianGrid2D;
class SoMFInt32;
struct PiContourCell;
class PiGridContouring;

// Isolines of a scalar field given at the nodes of a surface mesh.  For
// every isovalue, the mesh edges that it crosses get a crossing point by
// linear interpolation, and the crossings are joined into polylines, open
// where they end on the mesh boundary, closed otherwise.
//
// A side from value lo to value hi (lo <= hi) is cut by the isovalues c
// with lo <= c < hi, so a value exactly at a node counts on one side only;
// isovalues equal to node values are first moved a little (see
// PiVolumwright).  Edges are shared between elements through a class-wide
// hash table so that each crossing is computed once.  Grids take a faster
// path over their raw arrays that gives the same crossings, lines and
// order, unless threshold walls or values that are not finite call for the
// element records.
//
// Contouring objects share class-wide tables: one computation at a time.
class PiContouring : public PiVolumwright {
public:
    // The mesh kinds, by their code.
    enum MeshKind {
        INDEXED_MESH = 0,
        CARTESIAN_GRID = 1,
        PARAL_CARTESIAN_GRID = 2,
        REGULAR_CARTESIAN_GRID = 3,
        POLAR_GRID = 4
    };

    PiContouring();
    ~PiContouring() override;
    PiContouring(const PiContouring&) = delete;
    PiContouring& operator=(const PiContouring&) = delete;

    // The mesh and its z values (one per node, or null for z = 0).  The
    // indexed form serves the triangle and quadrangle meshes too.
    void setMesh(const PbIndexedMesh2D* mesh, const float* z);
    void setMesh(const PbCartesianGrid2D* mesh, const float* z);
    void setMesh(const PbParalCartesianGrid2D* mesh, const float* z);
    void setMesh(const PbRegularCartesianGrid2D* mesh, const float* z);
    void setMesh(const PbPolarGrid2D* mesh, const float* z);
    void setDataMapping(const PbDataMapping* mapping) { m_dataMapping = mapping; }
    int getMeshKind() const { return m_kind; }

    // Whether grids may take the fast path (on by default).
    void enableFastGridPath(bool on) { m_fastGridPathEnabled = on; }
    bool usedFastGridPath() const { return m_onFastPath; }

    // Removes the elements that would draw walls along the border of the
    // regions that the data mapping's thresholds make invisible: only with
    // transparency on, for an enabled threshold at least as transparent as
    // the transparency at which parts are deleted.  Elements with all nodes
    // inside stay, a quadrangle with three nodes inside becomes the
    // triangle of those, any other element is removed.  Lasts until the next
    // setMesh.
    void preventFromThresholdWall(const float* values);

    // The crossings of the node values with the current isovalues list,
    // joined.  z (or null) gives the crossings' z.  Elements that touch a
    // value that is not finite are skipped.
    void computeContouringPoints(const float* values, const float* z);

    // The polylines of the last computation.
    const PiIsolines& getIsolines();
    int getNumCrossingPoints() const { return static_cast<int>(m_crossings.size()) - 1; }

    // Frees the class-wide edge hash table (it is created again when next
    // needed).
    static void freeHashTableIsoEdge();

protected:
    struct Element {
        // 3 triangle, 4 quadrangle, 0 removed.
        int kind;
        int nodes[4];
        int numCutEdges;
        // The edge record of each side (0 while the side is not cut).
        int edges[4];
    };
    struct Edge {
        int nodes[2];
        int firstCrossing;
        int numCrossings;
        // -1 for none.
        int elements[2];
    };

    // Computes the crossings (and, with join, the links) by the general or
    // the fast path.  With the fast path the grid object stays for
    // further use (getGridContouring).
    void computeCrossings(const float* values, const float* z, bool join);
    const PiGridContouring* getGridContouring() const {
        return m_onFastPath ? m_grid.get() : nullptr;
    }

    const PbMesh2D* getMesh() const { return m_mesh; }
    // The grid, for the grid kinds; null for the indexed kind.
    const PbGrid2D* getGridMesh() const { return m_gridMesh; }
    const PbDataMapping* getDataMapping() const { return m_dataMapping; }
    int getNumNodes() const;
    // The element records (built on first need after setMesh).
    const std::vector<Element>& getElements();
    // Per cell 1 when the cell is drawn in its own node order, 0 when it is
    // reversed; null when all keep their order.
    const int* getOrientFlags() const { return m_orientFlags; }
    // The point array: on the general path the nodes, then the crossing
    // points; on the fast path the crossing points alone.
    const std::vector<SbVec3f>& getPoints() const { return m_points; }
    // The crossing points indexed by crossing number.
    const SbVec3f* getCrossingPoints() const;
    // An element as the shared cell code sees it; nodes get their band
    // against the adjusted isovalues.
    void describeElement(int element, const float* values, PiContourCell& cell) const;
    bool hasFiniteValues(const Element& element, const float* values) const;

private:
    void setMeshKind(MeshKind kind, const PbMesh2D* mesh, const float* z);
    void addElems(int count);
    void buildElements();
    void setPoints(const float* z);
    void resetRecords();
    void findCrossings(const float* values);
    void addIsolineEdge(int a, int b, float va, float vb, int k, int element, int side);
    void searchNextVertex();
    void tsearch_next_vertex_in_elem(int crossing, int element, int slot);
    bool computeOnFastPath(const float* values, const float* z, bool join);

    MeshKind m_kind = INDEXED_MESH;
    const PbMesh2D* m_mesh = nullptr;
    const PbGrid2D* m_gridMesh = nullptr;
    const float* m_z = nullptr;
    const int* m_orientFlags = nullptr;
    const PbDataMapping* m_dataMapping = nullptr;
    bool m_fastGridPathEnabled = true;
    bool m_elementsBuilt = false;
    bool m_wallsApplied = false;

    std::vector<Element> m_elements;
    std::vector<Edge> m_edges;
    std::vector<PiCrossing> m_crossings;
    std::vector<int> m_starts;
    std::vector<SbVec3f> m_points;
    std::unique_ptr<PiGridContouring> m_grid;
    bool m_onFastPath = false;
    PiIsolines m_isolines;
    bool m_isolinesBuilt = false;
};
