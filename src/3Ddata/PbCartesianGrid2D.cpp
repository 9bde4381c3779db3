#include <Quillon/3Ddata/PbCartesianGrid2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>

#include "3Ddata/PiContouring.h"

PbCartesianGrid2D::PbCartesianGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate), m_x(isDataDuplicate), m_y(isDataDuplicate) {}

void PbCartesianGrid2D::getGeometry(int& numX, int& numY, const float*& x, const float*& y,
                                    const float*& z) const {
    getDim(numX, numY);
    getXYGeometry(x, y);
    z = getZcoord();
}

void PbCartesianGrid2D::setXYGeometry(int numX, int numY, const float* x, const float* y) {
    m_x.set(x, numX * numY);
    m_y.set(y, numX * numY);
}

void PbCartesianGrid2D::getXYGeometry(const float*& x, const float*& y) const {
    x = m_x.get();
    y = m_y.get();
}

SbVec3f PbCartesianGrid2D::getNodeCoord(int i, int j) const {
    int numX, numY;
    getDim(numX, numY);
    return getNodeCoord(i * numY + j);
}

SbVec3f PbCartesianGrid2D::getNodeCoord(int nodeIndex) const {
    return SbVec3f(m_x[nodeIndex], m_y[nodeIndex], getZ(nodeIndex));
}

void PbCartesianGrid2D::print(FILE* fp) const {
    PbGrid2D::print(fp);
    int numX, numY;
    getDim(numX, numY);
    fprintf(fp, "PbCartesianGrid2D:: numX, numY = %d %d\n", numX, numY);
    const PbMeshArray<float>* arrays[] = {&m_x, &m_y};
    const char* names[] = {"x", "y"};
    for (int k = 0; k < 2; ++k) {
        const void* data = arrays[k]->get();
        if (data)
            fprintf(fp, "PbCartesianGrid2D:: %s, %s[0] = %p %p ...\n", names[k], names[k], data,
                    data);
        else
            fprintf(fp, "PbCartesianGrid2D:: %s = NULL\n", names[k]);
    }
}

void PbCartesianGrid2D::meshContouring(PiContouring* contouring, const float* zValues) const {
    if (contouring)
        contouring->setMesh(this, zValues);
}

void PbCartesianGrid2D::meshFilled(PoMeshFilled* kit) const {
    if (kit)
        kit->cartGridFilled(this);
}
