#include "3Ddata/PiCellBoxIndex.h"

#include "3Ddata/PiKeyedLists.h"

#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/3Ddata/PbSurfaceCell.h>

#include <cfloat>
#include <cmath>

namespace {

// Fraction of a cell's size by which its stored box is enlarged, covering
// points accepted by a location that converges only to a threshold.
const float s_cellSlack = 0.01f;
// Buckets per cell at most, which bounds the memory of the index.
const double s_maxBucketsPerCell = 1.0;

// How far beyond its box a cell may accept a point at tolerance 0 besides
// the slack.  A surface cell of a mesh with z accepts points up to a third
// of its size (mean edge or diagonal) from its plane, measured along the
// normal but reached along the axis that its location drops, so up to sqrt(3)
// times further; and over the cell's footprint the plane through node 0 of a
// non-planar quadrangle may leave the box.  Twice the box diagonal bounds
// both.
float planeReach(const PbCell& cell, const SbBox3f& box) {
    const PbSurfaceCell* surface = dynamic_cast<const PbSurfaceCell*>(&cell);
    if (!surface || !surface->hasZ() || box.isEmpty())
        return 0.0f;
    return 2.0f * (box.getMax() - box.getMin()).length();
}

} // namespace

PiCellBoxIndex::PiCellBoxIndex(const PbMesh& mesh)
    : m_geometryId(mesh.getGeometryId()), m_topologyId(mesh.getTopologyId()) {
    int numCells = mesh.getNumCells();
    if (numCells <= 0)
        return;
    m_boxes.resize(6 * static_cast<size_t>(numCells));
    SbBox3f all;
    double sum[3] = {0, 0, 0};
    for (int c = 0; c < numCells; ++c) {
        const PbCell* cell = mesh.getCell(c);
        SbBox3f box = cell->getBoundingBox();
        float* stored = &m_boxes[6 * static_cast<size_t>(c)];
        box.getBounds(stored[0], stored[1], stored[2], stored[3], stored[4], stored[5]);
        float reach = planeReach(*cell, box);
        for (int axis = 0; axis < 3; ++axis) {
            sum[axis] += stored[axis + 3] - stored[axis];
            stored[axis] -= reach;
            stored[axis + 3] += reach;
        }
        all.extendBy(box);
    }
    float allMin[3], allMax[3];
    all.getBounds(allMin[0], allMin[1], allMin[2], allMax[0], allMax[1], allMax[2]);
    float magnitude = 0.0f;
    for (int axis = 0; axis < 3; ++axis)
        magnitude = std::max({magnitude, std::fabs(allMin[axis]), std::fabs(allMax[axis])});
    float absoluteSlack = magnitude * 1e-6f + FLT_MIN;

    for (int axis = 0; axis < 3; ++axis) {
        m_min[axis] = FLT_MAX;
        m_max[axis] = -FLT_MAX;
    }
    for (int c = 0; c < numCells; ++c) {
        float slack = s_cellSlack * cellExtent(c) + absoluteSlack;
        float* stored = &m_boxes[6 * static_cast<size_t>(c)];
        for (int axis = 0; axis < 3; ++axis) {
            stored[axis] -= slack;
            stored[axis + 3] += slack;
            m_min[axis] = std::min(m_min[axis], stored[axis]);
            m_max[axis] = std::max(m_max[axis], stored[axis + 3]);
        }
        m_maxCellExtent = std::max(m_maxCellExtent, cellExtent(c));
    }
    float mean[3];
    for (int axis = 0; axis < 3; ++axis)
        mean[axis] = static_cast<float>(sum[axis] / numCells);
    computeBuckets(numCells, mean);
    fillBuckets(numCells);
}

// Buckets about the mean size of a cell's box, so that a cell overlaps few
// buckets and a bucket holds few cells, capped at one bucket per cell.
void PiCellBoxIndex::computeBuckets(int numCells, const float mean[3]) {
    double wanted[3];
    for (int axis = 0; axis < 3; ++axis) {
        double length = m_max[axis] - m_min[axis];
        wanted[axis] = mean[axis] > 0.0f ? std::max(1.0, std::ceil(length / mean[axis])) : 1.0;
    }
    double cap = std::max(1.0, s_maxBucketsPerCell * numCells);
    double total = wanted[0] * wanted[1] * wanted[2];
    if (total > cap) {
        double scale = std::cbrt(cap / total);
        for (double& n : wanted)
            n = std::max(1.0, std::floor(n * scale));
    }
    while (wanted[0] * wanted[1] * wanted[2] > cap) {
        double* largest = std::max_element(wanted, wanted + 3);
        *largest = std::max(1.0, std::floor(*largest / 2));
    }
    for (int axis = 0; axis < 3; ++axis) {
        m_dims[axis] = static_cast<int>(wanted[axis]);
        float length = m_max[axis] - m_min[axis];
        m_inverseBucketSize[axis] = length > 0.0f ? m_dims[axis] / length : 0.0f;
    }
}

void PiCellBoxIndex::fillBuckets(int numCells) {
    size_t numBuckets = static_cast<size_t>(m_dims[0]) * m_dims[1] * m_dims[2];
    auto forEachBucketOfCell = [this](int c, auto add) {
        const float* box = &m_boxes[6 * static_cast<size_t>(c)];
        int lo[3], hi[3];
        for (int axis = 0; axis < 3; ++axis) {
            lo[axis] = bucketCoord(axis, box[axis]);
            hi[axis] = bucketCoord(axis, box[axis + 3]);
        }
        for (int i = lo[0]; i <= hi[0]; ++i)
            for (int j = lo[1]; j <= hi[1]; ++j)
                for (int k = lo[2]; k <= hi[2]; ++k)
                    add(bucketOf(i, j, k));
    };
    PiKeyedLists::build(numCells, numBuckets, forEachBucketOfCell, m_bucketStart, m_bucketCells);
}

// Monotone in x, so a point inside a box falls in a bucket the box was
// listed in.
int PiCellBoxIndex::bucketCoord(int axis, float x) const {
    float f = (x - m_min[axis]) * m_inverseBucketSize[axis];
    f = std::min(std::max(f, 0.0f), static_cast<float>(m_dims[axis] - 1));
    return static_cast<int>(f);
}

// A parametric enlargement t moves an affine cell's accepted region by at
// most 4t of its size (a tetrahedron grows by 1 + 4t about its centroid);
// for the multilinear cells the derivatives grow with the extrapolation,
// hence the (1 + 2t)^2.
float PiCellBoxIndex::enlargement(float tolerance) {
    float widen = 1.0f + 2.0f * tolerance;
    return 4.0f * tolerance * widen * widen;
}

bool PiCellBoxIndex::boxContains(int cell, const SbVec3f& point, float margin) const {
    const float* box = &m_boxes[6 * static_cast<size_t>(cell)];
    for (int axis = 0; axis < 3; ++axis)
        if (point[axis] < box[axis] - margin || point[axis] > box[axis + 3] + margin)
            return false;
    return true;
}

float PiCellBoxIndex::cellExtent(int cell) const {
    const float* box = &m_boxes[6 * static_cast<size_t>(cell)];
    return std::max({box[3] - box[0], box[4] - box[1], box[5] - box[2]});
}

size_t PiCellBoxIndex::getMemoryUsed() const {
    return sizeof(*this) + m_boxes.capacity() * sizeof(float) +
           m_bucketStart.capacity() * sizeof(size_t) + m_bucketCells.capacity() * sizeof(int);
}
