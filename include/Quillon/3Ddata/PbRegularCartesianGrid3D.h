#pragma once
#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/3Ddata/PbVoxelCell.h>
#include <Quillon/QuillonApi.h>

// Regular grid: node (i, j, k) lies at (xmin + i dx, ymin + j dy, zmin + k dz)
// with dx = (xmax - xmin) / (numX - 1), and likewise dy and dz.
class QUILLON_API PbRegularCartesianGrid3D : public PbGrid3D {
public:
    explicit PbRegularCartesianGrid3D(int isDataDuplicate = 1);
    PbRegularCartesianGrid3D(int numX, int numY, int numZ, float xmin, float ymin, float zmin,
                             float xmax, float ymax, float zmax, int isDataDuplicate = 1);
    PbRegularCartesianGrid3D(const PbRegularCartesianGrid3D& other);
    PbRegularCartesianGrid3D& operator=(const PbRegularCartesianGrid3D& other);

    // Takes the sizes and the two corners.
    void setGeometry(int numX, int numY, int numZ, float xmin, float ymin, float zmin, float xmax,
                     float ymax, float zmax);
    using PbGrid3D::setGeometry;
    void getMinMax(float& xmin, float& ymin, float& zmin, float& xmax, float& ymax,
                   float& zmax) const;

    const PbCell* getCell(int cellIndex) const override;
    // Product of the three extents.
    float getVolume() const override;
    float getLongestEdgeLength() const override;
    // True for a plane perpendicular to x, y or z.
    int isCrossSectionOptimal(const SbPlane& plane) const override;
    // A plane across x, y or z is cut in the layer of cells it crosses.
    void meshCrossSection(PoMeshCrossSection* kit) const override;
    void print(FILE* fp) const override;

protected:
    // The arrays hold numX, numY and numZ values along the axes; only their
    // extremes are kept.
    bool isGeometryValid(const char* methodName, int numX, int numY, int numZ, const float* x,
                         const float* y, const float* z) const override;
    SbVec3f nodeCoord(int i, int j, int k) const override;
    void setXYZGeometry(int numX, int numY, int numZ, const float* x, const float* y,
                        const float* z) override;
    // The grid keeps no arrays: all three are null.
    void getXYZGeometry(const float*& x, const float*& y, const float*& z) const override;
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;

private:
    float step(int axis) const;

    SbVec3f m_min{0.0f, 0.0f, 0.0f};
    SbVec3f m_max{0.0f, 0.0f, 0.0f};
    mutable PbVoxelCell m_cell{this};
};
