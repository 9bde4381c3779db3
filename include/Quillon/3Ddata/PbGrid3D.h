#pragma once
#include <Quillon/3Ddata/PbMesh3D.h>
#include <Quillon/QuillonApi.h>

class PiGridAxes;

// Structured volume grid of numX x numY x numZ nodes.  Nodes are numbered
// with k fastest, then j, then i: node = (i * numY + j) * numZ + k; cells
// likewise over (numX - 1) x (numY - 1) x (numZ - 1).  The nodes of cell
// (i, j, k) are n(i,j,k), n(i+1,j,k), n(i+1,j+1,k), n(i,j+1,k), then the
// same four at k + 1, which is the hexahedron cell's local order.
class QUILLON_API PbGrid3D : public PbMesh3D {
public:
    PbGrid3D(const PbGrid3D& other);
    PbGrid3D& operator=(const PbGrid3D& other);
    ~PbGrid3D() override;

    void getDim(int& numX, int& numY, int& numZ) const;
    void getNodeIndices(int nodeIndex, int& i, int& j, int& k) const;
    void getCellIndices(int cellIndex, int& i, int& j, int& k) const;
    // The eight node ids of a cell, valid until the next call.
    const int* getCellNodeIds(int i, int j, int k) const;
    const int* getCellNodeIds(int cellIndex) const;

    // Takes new sizes and coordinates, in the layout of the kind's stored
    // geometry: one value per node for the Cartesian grid, one per index
    // along each axis for the others (the regular grid keeps their
    // extremes).  Bad sizes or missing arrays are reported and change
    // nothing.  A duplicating grid whose node count changes drops its sets.
    void setGeometry(int numX, int numY, int numZ, const float* x, const float* y, const float* z);
    void getGeometry(int& numX, int& numY, int& numZ, const float*& x, const float*& y,
                     const float*& z) const;

    // (0, 0, 0) with an error for indices out of range.
    SbVec3f getNodeCoord(int i, int j, int k) const;
    SbVec3f getNodeCoord(int nodeIndex) const override;

    // Owner cells in ascending index; at most eight, fewer on the boundary.
    void getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const override;
    // The cells across the six faces, in facet order (i - 1, i + 1, j - 1,
    // j + 1, k - 1, k + 1), skipping those beyond the boundary.
    void getAdjacentCellsIndByFacet(int cellIndex, PbArrayOfInt& adjacentCells) const override;
    // Area of the six sides.
    float getArea() const override;
    void print(FILE* fp) const override;

    // Number of quadrangles on the grid's six sides.
    int evaluateSkinFacesNum() const;

protected:
    explicit PbGrid3D(int isDataDuplicate);

    // Coordinates of node (i, j, k), indices already checked.
    virtual SbVec3f nodeCoord(int i, int j, int k) const = 0;
    // Checks the kind's coordinate arrays for the given sizes, posting an
    // error under methodName when they are unusable.
    virtual bool isGeometryValid(const char* methodName, int numX, int numY, int numZ,
                                 const float* x, const float* y, const float* z) const = 0;
    // Stores the kind's coordinates for the given sizes.
    virtual void setXYZGeometry(int numX, int numY, int numZ, const float* x, const float* y,
                                const float* z) = 0;
    virtual void getXYZGeometry(const float*& x, const float*& y, const float*& z) const = 0;

    // Posts an error under methodName for negative sizes or more nodes than
    // an int counts.
    static bool areSizesValid(const char* methodName, int numX, int numY, int numZ);
    // Posts an error under methodName when an axis of nodes lacks its array,
    // for the kinds that take one array per axis.
    static bool areAxisArraysValid(const char* methodName, int numX, int numY, int numZ,
                                   const float* x, const float* y, const float* z);
    // Takes the new sizes once the kind has stored its coordinates: drops
    // the sets of a duplicating grid whose node count changes, recounts
    // nodes and cells, clears the cached data and notifies.
    void changeGeometry(int numX, int numY, int numZ);
    // The node ids of a cell for the grid's cell object, apart from the
    // buffer that getCellNodeIds returns.
    const int* cellNodes(int cellIndex) const;
    // True when the plane is perpendicular to x, y or z.
    static int isAxisAlignedPlane(const SbPlane& plane);
    // For the grids whose nodes lie on axes: the kit's plane across an axis
    // is cut across that axis, any other cell by cell.
    void meshCrossSectionOnAxes(PoMeshCrossSection* kit) const;
    // Closed-form location for grids whose node (i, j, k) lies at
    // (X(i), Y(j), Z(k)): the candidate cells along each axis come from a
    // search in that axis's coordinates, and are tested in ascending cell
    // index.
    const PbCell* findContainingCellOnAxes(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                           const PbArrayOfInt& testedCells) const;
    int cellIndexOf(int i, int j, int k) const { return (i * (m_numY - 1) + j) * (m_numZ - 1) + k; }
    int nodeIndexOf(int i, int j, int k) const { return (i * m_numY + j) * m_numZ + k; }
    bool isCellIndexValid(int cellIndex) const { return cellIndex >= 0 && cellIndex < m_numCells; }
    void updateBoundingBox() const override;

    int m_numX = 0;
    int m_numY = 0;
    int m_numZ = 0;

private:
    void fillCellNodeIds(int i, int j, int k, int* ids) const;
    bool areNodeIndicesValid(int i, int j, int k) const;

    mutable int m_cellNodeIds[8] = {};
    mutable int m_cellObjectNodeIds[8] = {};
    mutable unsigned int m_boxGeometryId = 0;
    mutable std::unique_ptr<PiGridAxes> m_axes;
};
