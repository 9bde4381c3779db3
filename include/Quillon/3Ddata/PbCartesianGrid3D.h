#pragma once
#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/QuillonApi.h>

#include <Quillon/3Ddata/PbMeshArray.h>

// Curvilinear grid: x, y and z arrays of numX * numY * numZ values, one per
// node.  Its cells may be any hexahedra.
class QUILLON_API PbCartesianGrid3D : public PbGrid3D {
public:
    explicit PbCartesianGrid3D(int isDataDuplicate = 1);
    PbCartesianGrid3D(int numX, int numY, int numZ, const float* x, const float* y, const float* z,
                      int isDataDuplicate = 1);
    PbCartesianGrid3D(const PbCartesianGrid3D& other);
    PbCartesianGrid3D& operator=(const PbCartesianGrid3D& other);

    const PbCell* getCell(int cellIndex) const override;
    // Replaces the coordinates, keeping the sizes; missing arrays are
    // reported and change nothing.
    void setCoordinates(const float* x, const float* y, const float* z) override;
    // The three arrays, each of getNumNodes() values.
    void getCoordinates(const float*& x, const float*& y, const float*& z, int& sizeX, int& sizeY,
                        int& sizeZ) const override;
    void print(FILE* fp) const override;

protected:
    bool isGeometryValid(const char* methodName, int numX, int numY, int numZ, const float* x,
                         const float* y, const float* z) const override;
    SbVec3f nodeCoord(int i, int j, int k) const override;
    void setXYZGeometry(int numX, int numY, int numZ, const float* x, const float* y,
                        const float* z) override;
    void getXYZGeometry(const float*& x, const float*& y, const float*& z) const override;
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;

    PbMeshArray<float> m_coords[3];

private:
    mutable PbHexahedronCell m_cell{this};
};
