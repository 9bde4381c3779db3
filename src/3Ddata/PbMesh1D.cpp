#include <Quillon/3Ddata/PbMesh1D.h>

#include <Quillon/graph/PoDebugError.h>

#include <algorithm>

PbMesh1D::PbMesh1D(int isDataDuplicate) : PbMesh(isDataDuplicate) {}

PbMesh1D::~PbMesh1D() = default;

SbVec3f PbMesh1D::getNodeCoord(int nodeIndex) const {
    return SbVec3f(getX(nodeIndex), 0.0f, 0.0f);
}

int PbMesh1D::findSegment(float x, float& fraction) const {
    return findSegmentInOrder(x, fraction);
}

int PbMesh1D::findSegmentInOrder(float x, float& fraction) const {
    for (int s = 0; s + 1 < m_numNodes; ++s) {
        float a = getX(s), b = getX(s + 1);
        if (x >= std::min(a, b) && x <= std::max(a, b)) {
            fraction = a == b ? 0.0f : (x - a) / (b - a);
            return s;
        }
    }
    return -1;
}

int PbMesh1D::getValue(float x, const float* values, float& value) const {
    if (!values) {
        PoDebugError::post("PbMesh1D::getValue", "null values");
        return 0;
    }
    float fraction;
    int s = findSegment(x, fraction);
    if (s < 0)
        return 0;
    value = values[s] + fraction * (values[s + 1] - values[s]);
    return 1;
}

void PbMesh1D::getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const {
    cellIndices.empty();
    if (nodeIndex < 0 || nodeIndex >= m_numNodes)
        return;
    if (nodeIndex > 0)
        cellIndices.add(nodeIndex - 1);
    if (nodeIndex < m_numCells)
        cellIndices.add(nodeIndex);
}

const PbCell* PbMesh1D::getCell(int) const {
    return nullptr;
}

float PbMesh1D::getVolume() const {
    return 0.0f;
}

float PbMesh1D::getArea() const {
    return 0.0f;
}

void PbMesh1D::updateBoundingBox() const {
    m_boundingBox.makeEmpty();
    for (int n = 0; n < m_numNodes; ++n)
        m_boundingBox.extendBy(getNodeCoord(n));
}

const PbCell* PbMesh1D::findContainingCellProtected(const SbVec3f&, float, SbVec3f&,
                                                    PbArrayOfInt&) const {
    return nullptr;
}

bool PbMesh1D::checkSize(const char* method, int size) const {
    if (size < 0) {
        PoDebugError::post(method, "negative size (%d)", size);
        return false;
    }
    return true;
}

void PbMesh1D::finishGeometry(int size) {
    int numCells = std::max(size - 1, 0);
    removeSetsNotFitting(size, numCells);
    bool newTopology = size != m_numNodes;
    m_numNodes = size;
    m_numCells = numCells;
    geometryChanged(newTopology);
}
