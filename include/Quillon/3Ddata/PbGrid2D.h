#pragma once
#include <Quillon/3Ddata/PbMesh2D.h>
#include <Quillon/3Ddata/PbQuadrangleCell.h>
#include <Quillon/QuillonApi.h>

#include <memory>

class PiGridAxes;

// Base of the structured surface grids: numX by numY nodes, node (i, j)
// numbered i * numY + j (j varies fastest), and (numX - 1) by (numY - 1)
// quadrangle cells numbered the same way.  The nodes of cell (i, j) are
// (i, j), (i+1, j), (i+1, j+1), (i, j+1).
class QUILLON_API PbGrid2D : public PbMesh2D {
public:
    PbGrid2D(const PbGrid2D& other);
    PbGrid2D& operator=(const PbGrid2D& other);
    ~PbGrid2D() override;

    void getDim(int& numX, int& numY) const;
    void getNodeIndices(int node, int& i, int& j) const;
    void getCellIndices(int cell, int& i, int& j) const;
    // The four node ids of a cell, in an array of the grid that the next
    // call overwrites.
    int* getCellNodeIds(int i, int j) const;
    int* getCellNodeIds(int cell) const;

    // Sets the sizes and the coordinates in the kind's own layout (see each
    // kind) and, in the second form, one z per node.  Value sets are dropped
    // when a duplicating grid changes its number of nodes.  Negative or
    // overflowing sizes and missing coordinates are refused with an error.
    void setGeometry(int numX, int numY, const float* x, const float* y);
    void setGeometry(int numX, int numY, const float* x, const float* y, const float* z);

    virtual SbVec3f getNodeCoord(int i, int j) const = 0;
    SbVec3f getNodeCoord(int nodeIndex) const override;
    const PbCell* getCell(int cellIndex) const override;
    // Up to four cells around a node, in ascending order.
    void getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const override;
    // The outline of the grid: j = 0 with i increasing, then i = numX - 1,
    // j = numY - 1 and i = 0 back to node 0.
    void getLimitIndices(PbArrayOfInt& limitNodes, PbArrayOfInt& limitSizes) const override;
    void print(FILE* fp) const override;

protected:
    explicit PbGrid2D(int isDataDuplicate);

    virtual void setXYGeometry(int numX, int numY, const float* x, const float* y) = 0;
    virtual void getXYGeometry(const float*& x, const float*& y) const = 0;

    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;
    // Location in a flat grid whose node (i, j) lies at (X(i), Y(j)): the
    // columns and rows that can hold the point are found by bisection over
    // the axes, and their cells tested in ascending order, so that the
    // result is that of testing every cell.
    const PbCell* findInAxisAlignedCells(const SbVec3f& point, float tolerance, SbVec3f& pcoord,
                                         const PbArrayOfInt& testedCells) const;

    // Checks the sizes before any change; posts an error naming the method.
    bool checkSizes(const char* method, int numX, int numY) const;
    // Stores the sizes and z, drops the sets when their size no longer
    // matches, draws new ids and notifies a geometry change.
    void finishGeometry(int numX, int numY, const float* z);

private:
    int m_numX = 0;
    int m_numY = 0;
    mutable int m_cellNodeIds[4] = {0, 0, 0, 0};
    mutable int m_cellNodes[4] = {0, 0, 0, 0};
    mutable PbQuadrangleCell m_cell;
    mutable std::unique_ptr<PiGridAxes> m_axes;
};
