#pragma once
#include <Quillon/3Ddata/PbCell.h>

#include <cstdio>
#include <string>
#include <vector>

// Helpers shared by the cell tests.
namespace celltest {

// Node coordinates of a cell in local order.
using Coords = std::vector<SbVec3f>;

// The point of the cell at parametric coordinates pcoord, from the cell's
// own weights (whose values are checked separately).
inline SbVec3f toWorld(const PbCell& cell, const SbVec3f& pcoord) {
    float weights[PbCell::MAX_NODES];
    cell.getWeight(pcoord, weights);
    SbVec3f point(0.0f, 0.0f, 0.0f);
    for (int node = 0; node < cell.getNumNodes(); ++node)
        point += weights[node] * cell.getNodeCoord(node);
    return point;
}

inline std::string printed(const PbCell& cell) {
    FILE* fp = tmpfile();
    cell.print(fp);
    std::string text(static_cast<size_t>(ftell(fp)), '\0');
    rewind(fp);
    size_t read = fread(&text[0], 1, text.size(), fp);
    fclose(fp);
    text.resize(read);
    return text;
}

inline bool isFinite(const SbVec3f& v) {
    return v[0] == v[0] && v[1] == v[1] && v[2] == v[2] && v.length() < 1e30f;
}

} // namespace celltest
