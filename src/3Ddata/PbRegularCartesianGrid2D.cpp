#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>

#include "3Ddata/PiContouring.h"

#include "platform/SbLocaleString.h"

#include <algorithm>

PbRegularCartesianGrid2D::PbRegularCartesianGrid2D(int isDataDuplicate)
    : PbGrid2D(isDataDuplicate) {}

void PbRegularCartesianGrid2D::setGeometry(int numX, int numY, float xmin, float ymin, float xmax,
                                           float ymax) {
    setGeometry(numX, numY, xmin, ymin, xmax, ymax, nullptr);
}

void PbRegularCartesianGrid2D::setGeometry(int numX, int numY, float xmin, float ymin, float xmax,
                                           float ymax, const float* z) {
    if (!checkSizes("PbRegularCartesianGrid2D::setGeometry", numX, numY))
        return;
    storeExtent(numX, numY, xmin, ymin, xmax, ymax);
    finishGeometry(numX, numY, z);
}

void PbRegularCartesianGrid2D::setXYGeometry(int numX, int numY, const float* x, const float* y) {
    if (numX == 0 || numY == 0) {
        storeExtent(numX, numY, 0.0f, 0.0f, 0.0f, 0.0f);
        return;
    }
    auto [xmin, xmax] = std::minmax_element(x, x + numX);
    auto [ymin, ymax] = std::minmax_element(y, y + numY);
    storeExtent(numX, numY, *xmin, *ymin, *xmax, *ymax);
}

void PbRegularCartesianGrid2D::storeExtent(int numX, int numY, float xmin, float ymin, float xmax,
                                           float ymax) {
    m_xmin = xmin;
    m_ymin = ymin;
    m_xmax = xmax;
    m_ymax = ymax;
    m_dx = numX > 1 ? (xmax - xmin) / (numX - 1) : 0.0f;
    m_dy = numY > 1 ? (ymax - ymin) / (numY - 1) : 0.0f;
}

void PbRegularCartesianGrid2D::getXYGeometry(const float*& x, const float*& y) const {
    x = nullptr;
    y = nullptr;
}

void PbRegularCartesianGrid2D::getGeometry(int& numX, int& numY, float& xmin, float& ymin,
                                           float& xmax, float& ymax, const float*& z) const {
    getDim(numX, numY);
    xmin = m_xmin;
    ymin = m_ymin;
    xmax = m_xmax;
    ymax = m_ymax;
    z = getZcoord();
}

void PbRegularCartesianGrid2D::getSteps(float& dx, float& dy) const {
    dx = m_dx;
    dy = m_dy;
}

SbVec3f PbRegularCartesianGrid2D::getNodeCoord(int i, int j) const {
    int numX, numY;
    getDim(numX, numY);
    return SbVec3f(m_xmin + i * m_dx, m_ymin + j * m_dy, getZ(i * numY + j));
}

void PbRegularCartesianGrid2D::print(FILE* fp) const {
    PbGrid2D::print(fp);
    auto text = [](float v) { return SbLocaleString::toString_l("%f", v); };
    fprintf(fp, "PbRegularCartesianGrid2D:: m_xmin %s, m_xmax %s\n", text(m_xmin).getString(),
            text(m_xmax).getString());
    fprintf(fp, "PbRegularCartesianGrid2D:: m_ymin %s, m_ymax %s\n", text(m_ymin).getString(),
            text(m_ymax).getString());
}

const PbCell* PbRegularCartesianGrid2D::findContainingCellProtected(
    const SbVec3f& point, float tolerance, SbVec3f& pcoord, PbArrayOfInt& testedCells) const {
    if (hasZCoord())
        return PbGrid2D::findContainingCellProtected(point, tolerance, pcoord, testedCells);
    return findInAxisAlignedCells(point, tolerance, pcoord, testedCells);
}

void PbRegularCartesianGrid2D::meshContouring(PiContouring* contouring,
                                              const float* zValues) const {
    if (contouring)
        contouring->setMesh(this, zValues);
}

void PbRegularCartesianGrid2D::meshFilled(PoMeshFilled* kit) const {
    if (kit)
        kit->regularCartGridFilled(this);
}
