#pragma once
#include <Quillon/3Ddata/PbCartesianGrid2D.h>
#include <Quillon/QuillonApi.h>

// Rectilinear surface grid: x holds numX values, one per column i, and y
// numY values, one per row j; node (i, j) lies at (x[i], y[j]).
class QUILLON_API PbParalCartesianGrid2D : public PbCartesianGrid2D {
public:
    explicit PbParalCartesianGrid2D(int isDataDuplicate = 1);

    SbVec3f getNodeCoord(int i, int j) const override;
    SbVec3f getNodeCoord(int nodeIndex) const override;
    void print(FILE* fp) const override;
    void meshContouring(PiContouring* contouring, const float* zValues) const override;
    void meshFilled(PoMeshFilled* kit) const override;

protected:
    void setXYGeometry(int numX, int numY, const float* x, const float* y) override;
    // A flat grid is searched only over the columns and rows around the
    // point.
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;
};
