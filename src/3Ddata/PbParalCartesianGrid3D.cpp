#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>

#include <algorithm>
#include <cmath>

PbParalCartesianGrid3D::PbParalCartesianGrid3D(int isDataDuplicate)
    : PbCartesianGrid3D(isDataDuplicate) {}

PbParalCartesianGrid3D::PbParalCartesianGrid3D(int numX, int numY, int numZ, const float* x,
                                               const float* y, const float* z, int isDataDuplicate)
    : PbCartesianGrid3D(isDataDuplicate) {
    setGeometry(numX, numY, numZ, x, y, z);
}

SbVec3f PbParalCartesianGrid3D::nodeCoord(int i, int j, int k) const {
    return SbVec3f(m_coords[0][i], m_coords[1][j], m_coords[2][k]);
}

const PbCell* PbParalCartesianGrid3D::getCell(int cellIndex) const {
    if (!isCellIndexValid(cellIndex))
        return nullptr;
    const int* nodes = cellNodes(cellIndex);
    int i, j, k;
    getCellIndices(cellIndex, i, j, k);
    SbVec3f corner = nodeCoord(i, j, k);
    m_cell.setBox(cellIndex, nodes, corner, nodeCoord(i + 1, j + 1, k + 1) - corner);
    return &m_cell;
}

// The cells are boxes, so their volumes add up to the product of the sums
// of the cell widths along each axis.
float PbParalCartesianGrid3D::getVolume() const {
    if (m_numCells <= 0)
        return 0.0f;
    double volume = 1.0;
    for (int axis = 0; axis < 3; ++axis) {
        double length = 0.0;
        for (int n = 1; n < m_coords[axis].getNum(); ++n)
            length += std::fabs(m_coords[axis][n] - m_coords[axis][n - 1]);
        volume *= length;
    }
    return static_cast<float>(volume);
}

float PbParalCartesianGrid3D::getLongestEdgeLength() const {
    if (m_numCells <= 0)
        return 0.0f;
    float longest = 0.0f;
    for (int axis = 0; axis < 3; ++axis)
        for (int n = 1; n < m_coords[axis].getNum(); ++n)
            longest = std::max(longest, std::fabs(m_coords[axis][n] - m_coords[axis][n - 1]));
    return longest;
}

int PbParalCartesianGrid3D::isCrossSectionOptimal(const SbPlane& plane) const {
    return isAxisAlignedPlane(plane);
}

void PbParalCartesianGrid3D::getCoordinates(const float*& x, const float*& y, const float*& z,
                                            int& sizeX, int& sizeY, int& sizeZ) const {
    getXYZGeometry(x, y, z);
    getDim(sizeX, sizeY, sizeZ);
}

void PbParalCartesianGrid3D::print(FILE* fp) const {
    PbGrid3D::print(fp);
    const char* names[3] = {"x", "y", "z"};
    for (int axis = 0; axis < 3; ++axis) {
        const float* coords = m_coords[axis].get();
        if (coords)
            fprintf(fp, "PbParalCartesianGrid3D:: %s = (adress %p) ...\n", names[axis],
                    static_cast<const void*>(coords));
        else
            fprintf(fp, "PbParalCartesianGrid3D:: %s = NULL\n", names[axis]);
    }
}

bool PbParalCartesianGrid3D::isGeometryValid(const char* methodName, int numX, int numY, int numZ,
                                             const float* x, const float* y, const float* z) const {
    return areAxisArraysValid(methodName, numX, numY, numZ, x, y, z);
}

void PbParalCartesianGrid3D::setXYZGeometry(int numX, int numY, int numZ, const float* x,
                                            const float* y, const float* z) {
    m_coords[0].set(x, numX);
    m_coords[1].set(y, numY);
    m_coords[2].set(z, numZ);
}

const PbCell* PbParalCartesianGrid3D::findContainingCellProtected(const SbVec3f& point,
                                                                  float tolerance, SbVec3f& pcoord,
                                                                  PbArrayOfInt& testedCells) const {
    return findContainingCellOnAxes(point, tolerance, pcoord, testedCells);
}

void PbParalCartesianGrid3D::meshCrossSection(PoMeshCrossSection* kit) const {
    meshCrossSectionOnAxes(kit);
}
