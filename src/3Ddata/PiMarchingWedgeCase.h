#pragma once
#include "3Ddata/PiMarchingCase.h"

// A marching case of the wedge: 6 nodes, 9 edges; its turns are the half turn exchanging the two
// triangles (X) and a third of a turn about the wedge's axis (Z).
class PiMarchingWedgeCase : public PiMarchingCase {
public:
    PiMarchingWedgeCase(unsigned char baseNumber, unsigned char id);

    // The edges of the wedge (pairs of local nodes), shared with the
    // cell's own tables.
    static const int s_edges[9][2];

protected:
    std::unique_ptr<PiMarchingCase> clone() const override {
        return std::unique_ptr<PiMarchingCase>(new PiMarchingWedgeCase(*this));
    }
};
