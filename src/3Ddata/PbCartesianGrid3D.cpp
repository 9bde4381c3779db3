#include <Quillon/3Ddata/PbCartesianGrid3D.h>

#include <Quillon/graph/PoDebugError.h>

PbCartesianGrid3D::PbCartesianGrid3D(int isDataDuplicate)
    : PbGrid3D(isDataDuplicate), m_coords{PbMeshArray<float>(isDataDuplicate),
                                          PbMeshArray<float>(isDataDuplicate),
                                          PbMeshArray<float>(isDataDuplicate)} {}

PbCartesianGrid3D::PbCartesianGrid3D(int numX, int numY, int numZ, const float* x, const float* y,
                                     const float* z, int isDataDuplicate)
    : PbCartesianGrid3D(isDataDuplicate) {
    setGeometry(numX, numY, numZ, x, y, z);
}

PbCartesianGrid3D::PbCartesianGrid3D(const PbCartesianGrid3D& other)
    : PbGrid3D(other), m_coords{other.m_coords[0], other.m_coords[1], other.m_coords[2]} {}

PbCartesianGrid3D& PbCartesianGrid3D::operator=(const PbCartesianGrid3D& other) {
    if (this == &other)
        return *this;
    for (int axis = 0; axis < 3; ++axis)
        m_coords[axis] = other.m_coords[axis];
    PbGrid3D::operator=(other);
    return *this;
}

SbVec3f PbCartesianGrid3D::nodeCoord(int i, int j, int k) const {
    int node = nodeIndexOf(i, j, k);
    return SbVec3f(m_coords[0][node], m_coords[1][node], m_coords[2][node]);
}

const PbCell* PbCartesianGrid3D::getCell(int cellIndex) const {
    if (!isCellIndexValid(cellIndex))
        return nullptr;
    m_cell.set(cellIndex, cellNodes(cellIndex), m_coords[0].get(), m_coords[1].get(),
               m_coords[2].get());
    return &m_cell;
}

void PbCartesianGrid3D::setCoordinates(const float* x, const float* y, const float* z) {
    const char* method = "PbCartesianGrid3D::setCoordinates";
    if (!isGeometryValid(method, m_numX, m_numY, m_numZ, x, y, z))
        return;
    setXYZGeometry(m_numX, m_numY, m_numZ, x, y, z);
    geometryChanged(false);
}

void PbCartesianGrid3D::getCoordinates(const float*& x, const float*& y, const float*& z,
                                       int& sizeX, int& sizeY, int& sizeZ) const {
    getXYZGeometry(x, y, z);
    sizeX = sizeY = sizeZ = m_numNodes;
}

void PbCartesianGrid3D::print(FILE* fp) const {
    PbGrid3D::print(fp);
    const char* names[3] = {"x", "y", "z"};
    for (int axis = 0; axis < 3; ++axis) {
        const float* coords = m_coords[axis].get();
        if (coords)
            fprintf(fp, "PbCartesianGrid3D:: %s, %s[0], %s[0][0] = %p %p %p...\n", names[axis],
                    names[axis], names[axis], static_cast<const void*>(coords),
                    static_cast<const void*>(coords), static_cast<const void*>(coords));
        else
            fprintf(fp, "PbCartesianGrid3D:: %s = NULL\n", names[axis]);
    }
}

bool PbCartesianGrid3D::isGeometryValid(const char* methodName, int numX, int numY, int numZ,
                                        const float* x, const float* y, const float* z) const {
    if (numX * numY * numZ > 0 && (!x || !y || !z)) {
        PoDebugError::post(methodName, "x, y and z must each hold %d values", numX * numY * numZ);
        return false;
    }
    return true;
}

void PbCartesianGrid3D::setXYZGeometry(int numX, int numY, int numZ, const float* x, const float* y,
                                       const float* z) {
    const float* arrays[3] = {x, y, z};
    for (int axis = 0; axis < 3; ++axis)
        m_coords[axis].set(arrays[axis], numX * numY * numZ);
}

void PbCartesianGrid3D::getXYZGeometry(const float*& x, const float*& y, const float*& z) const {
    x = m_coords[0].get();
    y = m_coords[1].get();
    z = m_coords[2].get();
}

const PbCell* PbCartesianGrid3D::findContainingCellProtected(const SbVec3f& point, float tolerance,
                                                             SbVec3f& pcoord,
                                                             PbArrayOfInt& testedCells) const {
    return findContainingCellInIndex(point, tolerance, pcoord, testedCells);
}
