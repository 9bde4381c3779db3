#pragma once
#include "3Ddata/PiMarchingCase.h"

// A marching case of the pyramid: 5 nodes, 8 edges; its only turn is the quarter turn of the base
// about the apex (Z).
class PiMarchingPyraCase : public PiMarchingCase {
public:
    PiMarchingPyraCase(unsigned char baseNumber, unsigned char id);

    // The edges (pairs of local nodes) and the facets (local nodes, -1 in
    // the fourth slot of a triangle) of the pyramid, shared with the cell's
    // own tables.
    static const int s_edges[8][2];
    static const int s_facets[5][4];

protected:
    std::unique_ptr<PiMarchingCase> clone() const override {
        return std::unique_ptr<PiMarchingCase>(new PiMarchingPyraCase(*this));
    }
};
