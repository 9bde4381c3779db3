#pragma once
#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/3Ddata/PbVoxelCell.h>

#include <vector>

// Rectilinear grid: an x array of numX values, a y array of numY values and
// a z array of numZ values; node (i, j, k) lies at (x[i], y[j], z[k]).
class PbParalCartesianGrid3D : public PbGrid3D {
public:
    explicit PbParalCartesianGrid3D(int isDataDuplicate = 1);
    PbParalCartesianGrid3D(int numX, int numY, int numZ, const float* x, const float* y,
                           const float* z, int isDataDuplicate = 1);
    PbParalCartesianGrid3D(const PbParalCartesianGrid3D& other);
    PbParalCartesianGrid3D& operator=(const PbParalCartesianGrid3D& other);

    SbVec3f getNodeCoord(int i, int j, int k) const override;
    using PbGrid3D::getNodeCoord;
    const PbCell* getCell(int cellIndex) const override;
    // Product of the three extents.
    float getVolume() const override;
    float getLongestEdgeLength() const override;
    // True for a plane perpendicular to x, y or z.
    int isCrossSectionOptimal(const SbPlane& plane) const override;
    // Replaces the coordinates, keeping the sizes.
    void setCoordinates(const float* x, const float* y, const float* z) override;
    // The three arrays, of numX, numY and numZ values.
    void getCoordinates(const float*& x, const float*& y, const float*& z, int& sizeX, int& sizeY,
                        int& sizeZ) const override;
    void print(FILE* fp) const override;

protected:
    bool isGeometryValid(const char* methodName, int numX, int numY, int numZ, const float* x,
                         const float* y, const float* z) const override;
    void setXYZGeometry(const float* x, const float* y, const float* z) override;
    void getXYZGeometry(const float*& x, const float*& y, const float*& z) const override;
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;

private:
    void storeCoordinates(const float* x, const float* y, const float* z);

    std::vector<float> m_ownedCoords[3];
    const float* m_coords[3] = {nullptr, nullptr, nullptr};
    mutable PbVoxelCell m_cell{this};
};
