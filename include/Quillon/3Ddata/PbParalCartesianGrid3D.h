#pragma once
#include <Quillon/3Ddata/PbCartesianGrid3D.h>
#include <Quillon/3Ddata/PbVoxelCell.h>
#include <Quillon/QuillonApi.h>

// Rectilinear grid: an x array of numX values, a y array of numY values and
// a z array of numZ values; node (i, j, k) lies at (x[i], y[j], z[k]).  It
// keeps its arrays as the Cartesian grid does, with other sizes.
class QUILLON_API PbParalCartesianGrid3D : public PbCartesianGrid3D {
public:
    explicit PbParalCartesianGrid3D(int isDataDuplicate = 1);
    PbParalCartesianGrid3D(int numX, int numY, int numZ, const float* x, const float* y,
                           const float* z, int isDataDuplicate = 1);
    // The copy fills a cell object of its own.
    PbParalCartesianGrid3D(const PbParalCartesianGrid3D& other) : PbCartesianGrid3D(other) {}
    PbParalCartesianGrid3D& operator=(const PbParalCartesianGrid3D& other) {
        PbCartesianGrid3D::operator=(other);
        return *this;
    }

    const PbCell* getCell(int cellIndex) const override;
    // Product of the three extents.
    float getVolume() const override;
    float getLongestEdgeLength() const override;
    // True for a plane perpendicular to x, y or z.
    int isCrossSectionOptimal(const SbPlane& plane) const override;
    // A plane across x, y or z is cut in the layer of cells it crosses.
    void meshCrossSection(PoMeshCrossSection* kit) const override;
    // The three arrays, of numX, numY and numZ values.
    void getCoordinates(const float*& x, const float*& y, const float*& z, int& sizeX, int& sizeY,
                        int& sizeZ) const override;
    void print(FILE* fp) const override;

protected:
    bool isGeometryValid(const char* methodName, int numX, int numY, int numZ, const float* x,
                         const float* y, const float* z) const override;
    SbVec3f nodeCoord(int i, int j, int k) const override;
    void setXYZGeometry(int numX, int numY, int numZ, const float* x, const float* y,
                        const float* z) override;
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;

private:
    mutable PbVoxelCell m_cell{this};
};
