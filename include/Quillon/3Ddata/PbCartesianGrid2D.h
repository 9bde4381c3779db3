#pragma once
#include <Quillon/3Ddata/PbGrid2D.h>
#include <Quillon/QuillonApi.h>

// Curvilinear surface grid: the x and y coordinates of every node are
// given, numX * numY values each, indexed by node number.
class QUILLON_API PbCartesianGrid2D : public PbGrid2D {
public:
    explicit PbCartesianGrid2D(int isDataDuplicate = 1);

    void getGeometry(int& numX, int& numY, const float*& x, const float*& y, const float*& z) const;

    SbVec3f getNodeCoord(int i, int j) const override;
    SbVec3f getNodeCoord(int nodeIndex) const override;
    void print(FILE* fp) const override;
    void meshContouring(PiContouring* contouring, const float* zValues) const override;
    void meshFilled(PoMeshFilled* kit) const override;

protected:
    void setXYGeometry(int numX, int numY, const float* x, const float* y) override;
    void getXYGeometry(const float*& x, const float*& y) const override;

    PbMeshArray<float> m_x;
    PbMeshArray<float> m_y;
};
