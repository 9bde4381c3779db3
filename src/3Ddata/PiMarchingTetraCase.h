#pragma once
#include "3Ddata/PiMarchingCase.h"

// A marching case of the tetrahedron: 4 nodes, 6 edges; its turns are a third of a turn about the
// axis through node 3 (X) and through node 0 (Y), and a half turn exchanging nodes 0 and 1 and
// nodes 2 and 3 (Z).
class PiMarchingTetraCase : public PiMarchingCase {
public:
    PiMarchingTetraCase(unsigned char baseNumber, unsigned char id);

    // The edges (pairs of local nodes) and the facets (local nodes, -1 in
    // the fourth slot of a triangle) of the tetrahedron, shared with the cell's
    // own tables.
    static const int s_edges[6][2];
    static const int s_facets[4][4];

protected:
    std::unique_ptr<PiMarchingCase> clone() const override {
        return std::unique_ptr<PiMarchingCase>(new PiMarchingTetraCase(*this));
    }
};
