#include <Quillon/nodes/PoCoordinateListFilter.h>

#include <cmath>
#include <set>

PO_NODE_SOURCE(PoCoordinateListFilter, PoMesh1DFilter)

PoCoordinateListFilter::PoCoordinateListFilter() {
    SO_NODE_CONSTRUCTOR(PoCoordinateListFilter);
    SO_NODE_ADD_EMPTY_MFIELD(coordinate);
}

PoCoordinateListFilter::~PoCoordinateListFilter() = default;

namespace {
int nearestNode(int numNodes, const float* coordinates, float target) {
    int nearest = 0;
    for (int i = 1; i < numNodes; ++i)
        if (std::fabs(coordinates[i] - target) < std::fabs(coordinates[nearest] - target))
            nearest = i;
    return nearest;
}
} // namespace

PbArrayOfInt PoCoordinateListFilter::getFilteredIndices(int numNodes,
                                                        const float* coordinates) const {
    PbArrayOfInt indices;
    if (!coordinates || numNodes <= 0)
        return indices;
    std::set<int> kept;
    for (int i = 0; i < coordinate.getNum(); ++i)
        kept.insert(nearestNode(numNodes, coordinates, coordinate[i]));
    for (int i : kept)
        indices.add(i);
    return indices;
}
