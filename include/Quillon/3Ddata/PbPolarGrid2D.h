#pragma once
#include <Quillon/3Ddata/PbGrid2D.h>
#include <Quillon/QuillonApi.h>

// Polar surface grid: r holds numX radii, one per i, and t numY angles in
// radians, one per j; node (i, j) lies at (r[i] cos t[j], r[i] sin t[j]).
class QUILLON_API PbPolarGrid2D : public PbGrid2D {
public:
    explicit PbPolarGrid2D(int isDataDuplicate = 1);

    void getGeometry(int& numX, int& numY, const float*& r, const float*& t, const float*& z) const;

    using PbGrid2D::getNodeCoord;
    SbVec3f getNodeCoord(int i, int j) const override;
    void print(FILE* fp) const override;
    void meshContouring(PiContouring* contouring, const float* zValues) const override;
    void meshFilled(PoMeshFilled* kit) const override;

protected:
    void setXYGeometry(int numX, int numY, const float* r, const float* t) override;
    void getXYGeometry(const float*& r, const float*& t) const override;

private:
    PbMeshArray<float> m_r;
    PbMeshArray<float> m_t;
};
