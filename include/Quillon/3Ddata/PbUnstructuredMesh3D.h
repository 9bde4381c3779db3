#pragma once
#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/3Ddata/PbMesh3D.h>
#include <Quillon/3Ddata/PbMeshArray.h>
#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/QuillonApi.h>

#include <vector>

// Common ground of the unstructured volume meshes: numNodes nodes given by
// x, y and z arrays, and cells given by the concatenated node indices of
// cell 0, cell 1, ... .  A cell of 4 nodes is a tetrahedron, 5 a pyramid,
// 6 a wedge and 8 a hexahedron, in the local node order of those cells.
// Coordinates and indices are copied when the mesh duplicates its data and
// referenced otherwise.  Points are located through a spatial index over
// the cells' boxes.
class QUILLON_API PbUnstructuredMesh3D : public PbMesh3D {
public:
    ~PbUnstructuredMesh3D() override;

    SbVec3f getNodeCoord(int nodeIndex) const override;
    // Owner cells in ascending index.
    void getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const override;
    const PbCell* getCell(int cellIndex) const override;
    // Replaces the coordinates, keeping the sizes and the cells.
    void setCoordinates(const float* x, const float* y, const float* z) override;
    // The three arrays, each of getNumNodes() values.
    void getCoordinates(const float*& x, const float*& y, const float*& z, int& sizeX, int& sizeY,
                        int& sizeZ) const override;

    // The node indices of a cell and their number, or null for a cell index
    // out of range.
    const int* getCellNodeIndices(int cellIndex, int& numCellNodes) const;

protected:
    explicit PbUnstructuredMesh3D(int isDataDuplicate);
    PbUnstructuredMesh3D(const PbUnstructuredMesh3D& other);
    PbUnstructuredMesh3D& operator=(const PbUnstructuredMesh3D& other);

    // Checks and takes a new geometry: cellSizes gives each cell's number of
    // nodes, or is null when every cell has fixedCellSize nodes.  Negative
    // counts, missing arrays, cell sizes other than 4, 5, 6 or 8 and node
    // indices outside 0 to numNodes - 1 are reported under methodName and
    // change nothing.
    void changeGeometry(const char* methodName, int numNodes, const float* x, const float* y,
                        const float* z, int numCells, const int* cellSizes, int fixedCellSize,
                        const int* cellIndices);
    void updateBoundingBox() const override;
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;
    // The cell sizes as given (null for a mesh of one kind) and the number of
    // node indices of all cells.
    const int* getCellSizes() const { return m_fixedCellSize ? nullptr : m_cellSizes.get(); }
    int getNumCellIndices() const { return m_cellIndices.getNum(); }
    // Number of node indices the mesh holds storage for, 0 when it
    // references the caller's array.
    int getAllocatedCellIndices() const { return m_cellIndices.getAllocated(); }
    // Number of cell sizes the mesh holds storage for, 0 when it references
    // the caller's array or has cells of one kind.
    int getAllocatedCellSizes() const { return m_cellSizes.getAllocated(); }
    // Writes "<className>:: elemIndex[<cell>] = <node> <node> ...\n" per cell.
    void printCellIndices(FILE* fp, const char* className) const;

private:
    bool isTopologyValid(const char* methodName, int numNodes, int numCells, const int* cellSizes,
                         int fixedCellSize, const int* cellIndices) const;
    void buildOwnerCells() const;
    int cellStart(int cellIndex) const;
    int cellSize(int cellIndex) const;

    PbMeshArray<float> m_coords[3];
    // Each cell's number of nodes, empty for a mesh of one kind.
    PbMeshArray<int> m_cellSizes;
    PbMeshArray<int> m_cellIndices;
    int m_fixedCellSize = 0;
    // Start of each cell's indices, for meshes of mixed kinds.
    std::vector<int> m_cellStarts;

    // Owner cells of node n: m_ownerCells[m_ownerStarts[n]] up to
    // m_ownerStarts[n + 1], built on first use for the current topology.
    mutable std::vector<int> m_ownerStarts;
    mutable std::vector<int> m_ownerCells;
    mutable unsigned int m_ownersTopologyId = 0;
    mutable unsigned int m_boxGeometryId = 0;

    mutable PbTetrahedronCell m_tetrahedron{this};
    mutable PbPyramidCell m_pyramid{this};
    mutable PbWedgeCell m_wedge{this};
    mutable PbHexahedronCell m_hexahedron{this};
};
