#pragma once
#include <Inventor/SbBox2f.h>
#include <Inventor/SbVec2f.h>

#include <vector>

class PbMesh2D;

// Locates points in the xy plane among the triangles and quadrangles of a
// surface mesh and gives the interpolation weights there (linear in a
// triangle, bilinear in a quadrangle) together with their derivatives along
// x and y.  Cells are found through a grid of buckets over the mesh's extent,
// so that locating many points costs little more than one pass over the
// cells.
class PiCellLocator2D {
public:
    struct Location {
        int cell = -1;
        int numNodes = 0;
        int nodes[4] = {0, 0, 0, 0};
        float weights[4] = {0, 0, 0, 0};
        // Derivatives of each weight along x and y: the gradient of an
        // interpolated value is the sum of these times the node values.
        SbVec2f weightDerivs[4];
    };

    // A tolerance that accepts points put just outside the mesh by rounding.
    static constexpr float ROUNDING_TOLERANCE = 1e-3f;

    // tolerance is in parametric units, as for cell location.
    PiCellLocator2D(const PbMesh2D& mesh, float tolerance);

    // Finds the lowest-numbered cell that contains the point; false when none
    // does.
    bool locate(const SbVec2f& point, Location& location) const;

private:
    bool locateInCell(int cell, const SbVec2f& point, Location& location) const;
    int bucketOf(float value, float origin, float size, int count) const;
    void buildBuckets();

    std::vector<SbVec2f> m_nodes;
    // numCells + 1 offsets into m_cellNodes.
    std::vector<int> m_cellStarts;
    std::vector<int> m_cellNodes;
    float m_tolerance;
    SbBox2f m_extent;
    int m_numBucketsX = 1;
    int m_numBucketsY = 1;
    std::vector<std::vector<int>> m_buckets;
};
