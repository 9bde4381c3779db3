#include <Quillon/3Ddata/PbRegularMesh1D.h>

#include "platform/SbLocaleString.h"

#include <algorithm>
#include <cmath>

PbRegularMesh1D::PbRegularMesh1D(int isDataDuplicate) : PbMesh1D(isDataDuplicate) {}

void PbRegularMesh1D::setGeometry(int size, float xmin, float xmax) {
    if (!checkSize("PbRegularMesh1D::setGeometry", size))
        return;
    m_xmin = xmin;
    m_xmax = xmax;
    m_step = size > 1 ? (xmax - xmin) / (size - 1) : 0.0f;
    finishGeometry(size);
}

void PbRegularMesh1D::getGeometry(int& size, float& xmin, float& xmax) const {
    size = getSize();
    xmin = m_xmin;
    xmax = m_xmax;
}

float PbRegularMesh1D::getX(int nodeIndex) const {
    return m_xmin + nodeIndex * m_step;
}

int PbRegularMesh1D::findSegment(float x, float& fraction) const {
    if (m_step == 0.0f)
        return findSegmentInOrder(x, fraction);
    float u = (x - m_xmin) / m_step;
    int last = getSize() - 1;
    if (!(u >= 0.0f && u <= static_cast<float>(last)))
        return -1;
    // A point on a node belongs to the segment below it.
    int s = std::max(static_cast<int>(std::ceil(u)) - 1, 0);
    fraction = u - static_cast<float>(s);
    return s;
}

void PbRegularMesh1D::print(FILE* fp) const {
    PbMesh1D::print(fp);
    fprintf(fp, "PbRegularMesh1D:: m_xmin %s, m_xmax %s\n",
            SbLocaleString::toString_l("%f", m_xmin).getString(),
            SbLocaleString::toString_l("%f", m_xmax).getString());
}
