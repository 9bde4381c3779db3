#pragma once
#include "3Ddata/PiMarchingCase.h"

// A marching case of the hexahedron (and voxel): 8 nodes, 12 edges, turns about X, Y and Z.
class PiMarchingCubeCase : public PiMarchingCase {
public:
    PiMarchingCubeCase(unsigned char baseNumber, unsigned char id);

    // The edges (pairs of local nodes) and the facets (local nodes, -1 in
    // the fourth slot of a triangle) of the hexahedron, shared with the cell's
    // own tables.
    static const int s_edges[12][2];
    static const int s_facets[6][4];

protected:
    std::unique_ptr<PiMarchingCase> clone() const override {
        return std::unique_ptr<PiMarchingCase>(new PiMarchingCubeCase(*this));
    }
};
