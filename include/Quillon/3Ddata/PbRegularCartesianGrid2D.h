#pragma once
#include <Quillon/3Ddata/PbGrid2D.h>
#include <Quillon/QuillonApi.h>

// Regular surface grid: node (i, j) lies at (xmin + i * dx, ymin + j * dy)
// with dx = (xmax - xmin) / (numX - 1) and dy = (ymax - ymin) / (numY - 1).
class QUILLON_API PbRegularCartesianGrid2D : public PbGrid2D {
public:
    explicit PbRegularCartesianGrid2D(int isDataDuplicate = 1);

    // The array forms inherited from PbGrid2D take numX x values and numY y
    // values and keep only their smallest and largest values.
    using PbGrid2D::setGeometry;
    void setGeometry(int numX, int numY, float xmin, float ymin, float xmax, float ymax);
    void setGeometry(int numX, int numY, float xmin, float ymin, float xmax, float ymax,
                     const float* z);
    void getGeometry(int& numX, int& numY, float& xmin, float& ymin, float& xmax, float& ymax,
                     const float*& z) const;
    // The steps between nodes (0 along an axis with fewer than 2 nodes).
    void getSteps(float& dx, float& dy) const;

    using PbGrid2D::getNodeCoord;
    SbVec3f getNodeCoord(int i, int j) const override;
    void print(FILE* fp) const override;
    void meshContouring(PiContouring* contouring, const float* zValues) const override;
    void meshFilled(PoMeshFilled* kit) const override;

protected:
    void setXYGeometry(int numX, int numY, const float* x, const float* y) override;
    // No arrays: both are null.
    void getXYGeometry(const float*& x, const float*& y) const override;
    // A flat grid is searched only over the columns and rows around the
    // point.
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;

private:
    void storeExtent(int numX, int numY, float xmin, float ymin, float xmax, float ymax);

    float m_xmin = 0.0f;
    float m_ymin = 0.0f;
    float m_xmax = 0.0f;
    float m_ymax = 0.0f;
    float m_dx = 0.0f;
    float m_dy = 0.0f;
};
