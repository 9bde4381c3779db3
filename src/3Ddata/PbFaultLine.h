#pragma once
#include <Inventor/SbVec2f.h>

#include <string>
#include <vector>

// Triangulates a surface mesh's domain in the xy plane so that the triangles
// follow fault lines.  The mesh's nodes, its boundary sides and the fault
// polylines go into a constrained Delaunay triangulation; only the triangles
// inside the boundary are kept.  Fault lines that cross each other or the
// boundary gain a node at each crossing.  When the fault segments are split,
// every fault segment that a neighbouring node encroaches (a node strictly
// inside the circle whose diameter is the segment) is cut at its midpoint
// until none is, so that the faults appear in a conforming Delaunay
// triangulation; boundary sides are never split.
class PbFaultLine {
public:
    struct Input {
        std::vector<SbVec2f> nodes;
        // Pairs of node indices.
        std::vector<int> boundarySides;
        std::vector<std::vector<SbVec2f>> faultLines;
        bool splitFaultSegments = false;
    };

    struct Result {
        // Nodes the triangulation adds, numbered after the input nodes: fault
        // points first, in the order given, then crossings and split points
        // ordered by x, then y.
        std::vector<SbVec2f> newNodes;
        // Three node indices per triangle, counter-clockwise, the smallest
        // index first; triangles sorted by their indices.
        std::vector<int> triangles;
    };

    // Returns false with a reason in `error` when the triangulation fails.
    static bool triangulate(const Input& input, Result& result, std::string& error);
};
