#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>

#include "3Ddata/PiContouring.h"

PbParalCartesianGrid2D::PbParalCartesianGrid2D(int isDataDuplicate)
    : PbCartesianGrid2D(isDataDuplicate) {}

void PbParalCartesianGrid2D::setXYGeometry(int numX, int numY, const float* x, const float* y) {
    m_x.set(x, numX);
    m_y.set(y, numY);
}

SbVec3f PbParalCartesianGrid2D::getNodeCoord(int i, int j) const {
    int numX, numY;
    getDim(numX, numY);
    return SbVec3f(m_x[i], m_y[j], getZ(i * numY + j));
}

SbVec3f PbParalCartesianGrid2D::getNodeCoord(int nodeIndex) const {
    return PbGrid2D::getNodeCoord(nodeIndex);
}

void PbParalCartesianGrid2D::print(FILE* fp) const {
    PbGrid2D::print(fp);
    m_x.printAddress(fp, "PbParalCartesianGrid2D:: x");
    m_y.printAddress(fp, "PbParalCartesianGrid2D:: y");
}

const PbCell* PbParalCartesianGrid2D::findContainingCellProtected(const SbVec3f& point,
                                                                  float tolerance, SbVec3f& pcoord,
                                                                  PbArrayOfInt& testedCells) const {
    if (hasZCoord())
        return PbGrid2D::findContainingCellProtected(point, tolerance, pcoord, testedCells);
    return findInAxisAlignedCells(point, tolerance, pcoord, testedCells);
}

void PbParalCartesianGrid2D::meshContouring(PiContouring* contouring, const float* zValues) const {
    if (contouring)
        contouring->setMesh(this, zValues);
}

void PbParalCartesianGrid2D::meshFilled(PoMeshFilled* kit) const {
    if (kit)
        kit->paralCartGridFilled(this);
}
