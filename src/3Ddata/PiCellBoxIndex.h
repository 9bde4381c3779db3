#pragma once
#include <Inventor/SbVec3f.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

class PbMesh;

// Uniform bucket grid over the bounding boxes of a mesh's cells, for point
// location without testing every cell.  Each cell is listed in every bucket
// that its box overlaps, in ascending cell index, so the candidates of a
// point come out in ascending order and the first containing candidate is
// the one an exhaustive search in index order would find.
//
// A cell accepts points a little outside its geometric box: a positive
// tolerance enlarges it in parametric units, and the iterative location of
// curved cells converges only to a threshold.  The stored boxes therefore
// carry a slack of a hundredth of the cell's size, and positive tolerances
// widen them further by a bound on how far the parametric enlargement can
// reach (see enlargement()).
class PiCellBoxIndex {
public:
    // Takes the boxes of every cell of the mesh (through getCell).
    explicit PiCellBoxIndex(const PbMesh& mesh);

    bool isBuiltFor(unsigned int geometryId, unsigned int topologyId) const {
        return geometryId == m_geometryId && topologyId == m_topologyId;
    }

    // Calls visit(cellIndex) for each cell that may contain the point, in
    // ascending index, until visit returns true.
    template <typename Visit>
    void forEachCandidate(const SbVec3f& point, float tolerance, Visit visit) const {
        if (m_bucketStart.empty())
            return;
        if (tolerance <= 0.0f)
            forEachCandidateInBucket(point, visit);
        else
            forEachCandidateAround(point, tolerance, visit);
    }

    // Bytes held by the index.
    size_t getMemoryUsed() const;
    int getNumBuckets() const { return static_cast<int>(m_bucketStart.size()) - 1; }

private:
    void computeBuckets(int numCells, const float mean[3]);
    void fillBuckets(int numCells);
    int bucketCoord(int axis, float x) const;
    int bucketOf(int i, int j, int k) const { return (i * m_dims[1] + j) * m_dims[2] + k; }
    // Distance, in units of a cell's size, that a positive parametric
    // tolerance may move a cell's accepted region beyond its box.
    static float enlargement(float tolerance);
    bool boxContains(int cell, const SbVec3f& point, float margin) const;
    float cellExtent(int cell) const;

    template <typename Visit>
    void forEachCandidateInBucket(const SbVec3f& point, Visit visit) const {
        for (int axis = 0; axis < 3; ++axis)
            if (point[axis] < m_min[axis] || point[axis] > m_max[axis])
                return;
        int bucket =
            bucketOf(bucketCoord(0, point[0]), bucketCoord(1, point[1]), bucketCoord(2, point[2]));
        for (size_t n = m_bucketStart[bucket]; n < m_bucketStart[bucket + 1]; ++n) {
            int cell = m_bucketCells[n];
            if (boxContains(cell, point, 0.0f) && visit(cell))
                return;
        }
    }

    template <typename Visit>
    void forEachCandidateAround(const SbVec3f& point, float tolerance, Visit visit) const {
        float grow = enlargement(tolerance);
        float reach = grow * m_maxCellExtent;
        int lo[3], hi[3];
        for (int axis = 0; axis < 3; ++axis) {
            if (point[axis] < m_min[axis] - reach || point[axis] > m_max[axis] + reach)
                return;
            lo[axis] = bucketCoord(axis, point[axis] - reach);
            hi[axis] = bucketCoord(axis, point[axis] + reach);
        }
        std::vector<int> candidates;
        for (int i = lo[0]; i <= hi[0]; ++i)
            for (int j = lo[1]; j <= hi[1]; ++j)
                for (int k = lo[2]; k <= hi[2]; ++k) {
                    int bucket = bucketOf(i, j, k);
                    for (size_t n = m_bucketStart[bucket]; n < m_bucketStart[bucket + 1]; ++n) {
                        int cell = m_bucketCells[n];
                        if (boxContains(cell, point, grow * cellExtent(cell)))
                            candidates.push_back(cell);
                    }
                }
        std::sort(candidates.begin(), candidates.end());
        candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
        for (int cell : candidates)
            if (visit(cell))
                return;
    }

    unsigned int m_geometryId;
    unsigned int m_topologyId;
    // Per cell: xmin, ymin, zmin, xmax, ymax, zmax, slack included.
    std::vector<float> m_boxes;
    // Bucket b lists m_bucketCells[m_bucketStart[b]] to [m_bucketStart[b + 1] - 1].
    std::vector<size_t> m_bucketStart;
    std::vector<int> m_bucketCells;
    float m_min[3] = {0, 0, 0};
    float m_max[3] = {0, 0, 0};
    float m_inverseBucketSize[3] = {0, 0, 0};
    int m_dims[3] = {1, 1, 1};
    float m_maxCellExtent = 0.0f;
};
