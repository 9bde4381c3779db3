#pragma once
#include "3Ddata/PiMarchingCase.h"

// A marching case of the pyramid: 5 nodes, 8 edges; its only turn is the quarter turn of the base
// about the apex (Z).
class PiMarchingPyraCase : public PiMarchingCase {
public:
    PiMarchingPyraCase(unsigned char baseNumber, unsigned char id);

    // The edges of the pyramid (pairs of local nodes), shared with the
    // cell's own tables.
    static const int s_edges[8][2];

protected:
    std::unique_ptr<PiMarchingCase> clone() const override {
        return std::unique_ptr<PiMarchingCase>(new PiMarchingPyraCase(*this));
    }
};
