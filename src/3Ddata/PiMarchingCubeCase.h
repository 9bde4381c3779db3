#pragma once
#include "3Ddata/PiMarchingCase.h"

// A marching case of the hexahedron (and voxel): 8 nodes, 12 edges, turns about X, Y and Z.
class PiMarchingCubeCase : public PiMarchingCase {
public:
    PiMarchingCubeCase(unsigned char baseNumber, unsigned char id);

    // The edges of the hexahedron (pairs of local nodes), shared with the
    // cell's own tables.
    static const int s_edges[12][2];

protected:
    std::unique_ptr<PiMarchingCase> clone() const override {
        return std::unique_ptr<PiMarchingCase>(new PiMarchingCubeCase(*this));
    }
};
