#pragma once
#include <Quillon/3Ddata/PbMesh1D.h>
#include <Quillon/QuillonApi.h>

// Line mesh of evenly spaced nodes from xmin to xmax: node i at
// xmin + i * step, step = (xmax - xmin) / (size - 1).
class QUILLON_API PbRegularMesh1D : public PbMesh1D {
public:
    explicit PbRegularMesh1D(int isDataDuplicate = 1);

    // A negative size is refused with an error.
    void setGeometry(int size, float xmin, float xmax);
    void getGeometry(int& size, float& xmin, float& xmax) const;
    float getStart() const { return m_xmin; }
    // 0 for fewer than 2 nodes.
    float getStep() const { return m_step; }

    float getX(int nodeIndex) const override;
    // Found in closed form.
    int findSegment(float x, float& fraction) const override;
    void print(FILE* fp) const override;

private:
    float m_xmin = 0.0f;
    float m_xmax = 0.0f;
    float m_step = 0.0f;
};
