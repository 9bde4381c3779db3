#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>

#include "platform/SbLocaleString.h"

#include <algorithm>
#include <cmath>

PbRegularCartesianGrid3D::PbRegularCartesianGrid3D(int isDataDuplicate)
    : PbGrid3D(isDataDuplicate) {}

PbRegularCartesianGrid3D::PbRegularCartesianGrid3D(int numX, int numY, int numZ, float xmin,
                                                   float ymin, float zmin, float xmax, float ymax,
                                                   float zmax, int isDataDuplicate)
    : PbGrid3D(isDataDuplicate) {
    setGeometry(numX, numY, numZ, xmin, ymin, zmin, xmax, ymax, zmax);
}

PbRegularCartesianGrid3D::PbRegularCartesianGrid3D(const PbRegularCartesianGrid3D& other)
    : PbGrid3D(other), m_min(other.m_min), m_max(other.m_max) {}

PbRegularCartesianGrid3D&
PbRegularCartesianGrid3D::operator=(const PbRegularCartesianGrid3D& other) {
    if (this == &other)
        return *this;
    m_min = other.m_min;
    m_max = other.m_max;
    PbGrid3D::operator=(other);
    return *this;
}

void PbRegularCartesianGrid3D::setGeometry(int numX, int numY, int numZ, float xmin, float ymin,
                                           float zmin, float xmax, float ymax, float zmax) {
    if (!areSizesValid("PbRegularCartesianGrid3D::setGeometry", numX, numY, numZ))
        return;
    m_min.setValue(xmin, ymin, zmin);
    m_max.setValue(xmax, ymax, zmax);
    changeGeometry(numX, numY, numZ);
}

void PbRegularCartesianGrid3D::getMinMax(float& xmin, float& ymin, float& zmin, float& xmax,
                                         float& ymax, float& zmax) const {
    m_min.getValue(xmin, ymin, zmin);
    m_max.getValue(xmax, ymax, zmax);
}

float PbRegularCartesianGrid3D::step(int axis) const {
    int dims[3] = {m_numX, m_numY, m_numZ};
    return dims[axis] > 1 ? (m_max[axis] - m_min[axis]) / (dims[axis] - 1) : 0.0f;
}

SbVec3f PbRegularCartesianGrid3D::nodeCoord(int i, int j, int k) const {
    return SbVec3f(m_min[0] + i * step(0), m_min[1] + j * step(1), m_min[2] + k * step(2));
}

const PbCell* PbRegularCartesianGrid3D::getCell(int cellIndex) const {
    if (!isCellIndexValid(cellIndex))
        return nullptr;
    const int* nodes = cellNodes(cellIndex);
    int i, j, k;
    getCellIndices(cellIndex, i, j, k);
    m_cell.setBox(cellIndex, nodes, nodeCoord(i, j, k), SbVec3f(step(0), step(1), step(2)));
    return &m_cell;
}

float PbRegularCartesianGrid3D::getVolume() const {
    if (m_numCells <= 0)
        return 0.0f;
    SbVec3f extent = m_max - m_min;
    return std::fabs(extent[0] * extent[1] * extent[2]);
}

float PbRegularCartesianGrid3D::getLongestEdgeLength() const {
    if (m_numCells <= 0)
        return 0.0f;
    return std::max({std::fabs(step(0)), std::fabs(step(1)), std::fabs(step(2))});
}

int PbRegularCartesianGrid3D::isCrossSectionOptimal(const SbPlane& plane) const {
    return isAxisAlignedPlane(plane);
}

void PbRegularCartesianGrid3D::print(FILE* fp) const {
    PbGrid3D::print(fp);
    const char* names[3] = {"x", "y", "z"};
    for (int axis = 0; axis < 3; ++axis)
        fprintf(fp, "PbRegularCartesianGrid3D:: m_%smin %s, m_%smax %s\n", names[axis],
                SbLocaleString::toString_l("%f", m_min[axis]).getString(), names[axis],
                SbLocaleString::toString_l("%f", m_max[axis]).getString());
}

bool PbRegularCartesianGrid3D::isGeometryValid(const char* methodName, int numX, int numY, int numZ,
                                               const float* x, const float* y,
                                               const float* z) const {
    return areAxisArraysValid(methodName, numX, numY, numZ, x, y, z);
}

void PbRegularCartesianGrid3D::setXYZGeometry(int numX, int numY, int numZ, const float* x,
                                              const float* y, const float* z) {
    const float* arrays[3] = {x, y, z};
    const int sizes[3] = {numX, numY, numZ};
    for (int axis = 0; axis < 3; ++axis) {
        const float* first = arrays[axis];
        if (sizes[axis] < 1) {
            m_min[axis] = m_max[axis] = 0.0f;
            continue;
        }
        auto extremes = std::minmax_element(first, first + sizes[axis]);
        m_min[axis] = *extremes.first;
        m_max[axis] = *extremes.second;
    }
}

void PbRegularCartesianGrid3D::getXYZGeometry(const float*& x, const float*& y,
                                              const float*& z) const {
    x = y = z = nullptr;
}

const PbCell* PbRegularCartesianGrid3D::findContainingCellProtected(
    const SbVec3f& point, float tolerance, SbVec3f& pcoord, PbArrayOfInt& testedCells) const {
    return findContainingCellOnAxes(point, tolerance, pcoord, testedCells);
}

void PbRegularCartesianGrid3D::meshCrossSection(PoMeshCrossSection* kit) const {
    meshCrossSectionOnAxes(kit);
}
