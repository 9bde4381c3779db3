#pragma once
#include <Quillon/3Ddata/PbMesh1D.h>
#include <Quillon/3Ddata/PbMeshArray.h>
#include <Quillon/QuillonApi.h>

// Line mesh whose nodes are placed at the given x values.
class QUILLON_API PbIrregularMesh1D : public PbMesh1D {
public:
    explicit PbIrregularMesh1D(int isDataDuplicate = 1);

    // x holds size values.  A negative size or missing values are refused
    // with an error.
    void setGeometry(int size, const float* x);
    void getGeometry(int& size, const float*& x) const;

    float getX(int nodeIndex) const override;
    // A binary search when the x values increase, else a scan in order.
    int findSegment(float x, float& fraction) const override;
    void print(FILE* fp) const override;

private:
    PbMeshArray<float> m_x;
    bool m_increasing = false;
};
