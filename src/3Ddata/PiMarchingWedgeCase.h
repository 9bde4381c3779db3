#pragma once
#include "3Ddata/PiMarchingCase.h"

// A marching case of the wedge: 6 nodes, 9 edges; its turns are the half turn exchanging the two
// triangles (X) and a third of a turn about the wedge's axis (Z).
class PiMarchingWedgeCase : public PiMarchingCase {
public:
    PiMarchingWedgeCase(unsigned char baseNumber, unsigned char id);

    // The edges (pairs of local nodes) and the facets (local nodes, -1 in
    // the fourth slot of a triangle) of the wedge, shared with the cell's
    // own tables.
    static const int s_edges[9][2];
    static const int s_facets[5][4];

protected:
    std::unique_ptr<PiMarchingCase> clone() const override {
        return std::unique_ptr<PiMarchingCase>(new PiMarchingWedgeCase(*this));
    }
};
