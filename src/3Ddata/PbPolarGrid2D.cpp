#include <Quillon/3Ddata/PbPolarGrid2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>

#include "3Ddata/PiContouring.h"

#include <cmath>

PbPolarGrid2D::PbPolarGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate), m_r(isDataDuplicate), m_t(isDataDuplicate) {}

void PbPolarGrid2D::setXYGeometry(int numX, int numY, const float* r, const float* t) {
    m_r.set(r, numX);
    m_t.set(t, numY);
}

void PbPolarGrid2D::getXYGeometry(const float*& r, const float*& t) const {
    r = m_r.get();
    t = m_t.get();
}

void PbPolarGrid2D::getGeometry(int& numX, int& numY, const float*& r, const float*& t,
                                const float*& z) const {
    getDim(numX, numY);
    getXYGeometry(r, t);
    z = getZcoord();
}

SbVec3f PbPolarGrid2D::getNodeCoord(int i, int j) const {
    int numX, numY;
    getDim(numX, numY);
    return SbVec3f(m_r[i] * std::cos(m_t[j]), m_r[i] * std::sin(m_t[j]), getZ(i * numY + j));
}

void PbPolarGrid2D::print(FILE* fp) const {
    PbGrid2D::print(fp);
    m_r.printAddress(fp, "PbPolarGrid2D:: r");
    m_t.printAddress(fp, "PbPolarGrid2D:: t");
}

void PbPolarGrid2D::meshContouring(PiContouring* contouring, const float* zValues) const {
    if (contouring)
        contouring->setMesh(this, zValues);
}

void PbPolarGrid2D::meshFilled(PoMeshFilled* kit) const {
    if (kit)
        kit->polarGridFilled(this);
}
