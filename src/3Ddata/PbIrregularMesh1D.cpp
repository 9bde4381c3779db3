#include <Quillon/3Ddata/PbIrregularMesh1D.h>

#include <Quillon/graph/PoDebugError.h>

#include <algorithm>

PbIrregularMesh1D::PbIrregularMesh1D(int isDataDuplicate)
    : PbMesh1D(isDataDuplicate), m_x(isDataDuplicate) {}

void PbIrregularMesh1D::setGeometry(int size, const float* x) {
    const char* method = "PbIrregularMesh1D::setGeometry";
    if (!checkSize(method, size))
        return;
    if (size > 0 && !x) {
        PoDebugError::post(method, "null x values for %d nodes", size);
        return;
    }
    m_x.set(x, size);
    m_increasing = size > 0 && std::is_sorted(x, x + size);
    finishGeometry(size);
}

void PbIrregularMesh1D::getGeometry(int& size, const float*& x) const {
    size = getSize();
    x = m_x.get();
}

float PbIrregularMesh1D::getX(int nodeIndex) const {
    return m_x[nodeIndex];
}

int PbIrregularMesh1D::findSegment(float x, float& fraction) const {
    if (!m_increasing)
        return findSegmentInOrder(x, fraction);
    const float* begin = m_x.get();
    const float* end = begin + getSize();
    if (getSize() < 2 || !(x >= begin[0] && x <= end[-1]))
        return -1;
    // The first node at or beyond x ends the segment (or starts segment 0).
    int s = std::max(static_cast<int>(std::lower_bound(begin, end, x) - begin) - 1, 0);
    float a = begin[s], b = begin[s + 1];
    fraction = a == b ? 0.0f : (x - a) / (b - a);
    return s;
}

void PbIrregularMesh1D::print(FILE* fp) const {
    PbMesh1D::print(fp);
    m_x.printAddress(fp, "PbIrregularMesh1D:: x");
}
