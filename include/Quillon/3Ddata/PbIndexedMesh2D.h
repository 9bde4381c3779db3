#pragma once
#include <Quillon/3Ddata/PbMesh2D.h>
#include <Quillon/3Ddata/PbQuadrangleCell.h>
#include <Quillon/3Ddata/PbTriangleCell.h>
#include <Quillon/QuillonApi.h>

// Unstructured surface mesh of triangles and quadrangles: numNodes nodes
// with x, y and optional z coordinates, and cells given by their number of
// nodes (3 or 4) and their node indices, cell after cell.  Keeps, for every
// node, the cells that own it.
class QUILLON_API PbIndexedMesh2D : public PbMesh2D {
public:
    explicit PbIndexedMesh2D(int isDataDuplicate = 1);
    PbIndexedMesh2D(const PbIndexedMesh2D& other);
    PbIndexedMesh2D& operator=(const PbIndexedMesh2D& other);
    ~PbIndexedMesh2D() override;

    // cellTypes holds the number of nodes of each cell, cellIndices their
    // node indices one cell after the other.  Refused with an error, leaving
    // the mesh as it was, for negative counts, missing arrays, cells of
    // another size or node indices outside 0 to numNodes - 1.  Value sets
    // are dropped when a duplicating mesh changes its number of nodes or
    // cells.
    void setGeometry(int numNodes, const float* x, const float* y, int numCells,
                     const int* cellTypes, const int* cellIndices);
    void setGeometry(int numNodes, const float* x, const float* y, const float* z, int numCells,
                     const int* cellTypes, const int* cellIndices);
    // cellTypes is null for the triangle and quadrangle meshes, whose cells
    // all have 3 or 4 nodes.
    void getGeometry(int& numNodes, const float*& x, const float*& y, const float*& z,
                     int& numCells, const int*& cellTypes, const int*& cellIndices) const;

    // Number of nodes and node indices of a cell; 0 and null for an index
    // outside the mesh.
    int getCellNumNodes(int cellIndex) const;
    const int* getCellNodeIndices(int cellIndex) const;

    // Element orientation, off by default.  When on, getOrientFlags gives one
    // flag per cell: 1 when the cell is drawn in its own node order, 0 when
    // it must be reversed so that all the cells of a piece of the mesh
    // (cells joined through shared sides) wind the same way.  The first cell
    // of each piece sets the way: counter-clockwise seen from +z (its normal
    // has a non-negative z).  In a flat mesh the flag is thus 1 exactly for
    // the counter-clockwise cells.
    void setElemOrientation(int on);
    int getElemOrientation() const { return m_elemOrientation; }
    // Null when the orientation is off.
    const int* getOrientFlags() const;

    SbVec3f getNodeCoord(int nodeIndex) const override;
    // A triangle or a quadrangle cell, refilled on each call.
    const PbCell* getCell(int cellIndex) const override;
    // The owner cells in ascending order.
    void getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const override;
    void print(FILE* fp) const override;
    void meshContouring(PiContouring* contouring, const float* zValues) const override;
    void meshFilled(PoMeshFilled* kit) const override;

protected:
    // Whether cells of this many nodes belong in this kind of mesh.
    virtual bool acceptsCellSize(int numNodes) const;
    // Checks and stores a new geometry under the name of the calling
    // method.  Without cellTypes every cell has fixedSize nodes.
    void storeGeometry(const char* method, int numNodes, const float* x, const float* y,
                       const float* z, int numCells, const int* cellTypes, int fixedSize,
                       const int* cellIndices);
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;

private:
    bool checkGeometry(const char* method, int numNodes, const float* x, const float* y,
                       int numCells, const int* cellTypes, int fixedSize,
                       const int* cellIndices) const;
    void buildCellStarts();
    void buildOwners();
    void computeOrientFlags() const;

    PbMeshArray<float> m_x;
    PbMeshArray<float> m_y;
    PbMeshArray<int> m_cellTypes;
    // The size of every cell when no cell types are kept.
    int m_fixedSize = 0;
    PbMeshArray<int> m_cellIndices;
    // numCells + 1 offsets into the cell indices.
    std::vector<int> m_cellStarts{0};
    // numNodes + 1 offsets into m_ownerCells.
    std::vector<int> m_ownerStarts{0};
    std::vector<int> m_ownerCells;
    int m_elemOrientation = 0;
    mutable std::vector<int> m_orientFlags;
    mutable PbTriangleCell m_triangle;
    mutable PbQuadrangleCell m_quadrangle;
};
