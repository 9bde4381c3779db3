#include <Quillon/nodes/PoPeriodIndexFilter.h>

#include <Quillon/graph/PoDebugError.h>

#include <algorithm>

PO_NODE_SOURCE(PoPeriodIndexFilter, PoMesh1DFilter)

PoPeriodIndexFilter::PoPeriodIndexFilter() {
    SO_NODE_CONSTRUCTOR(PoPeriodIndexFilter);
    SO_NODE_ADD_FIELD(firstIndex, (0));
    SO_NODE_ADD_FIELD(period, (1));
}

PoPeriodIndexFilter::~PoPeriodIndexFilter() = default;

PbArrayOfInt PoPeriodIndexFilter::getFilteredIndices(int numNodes, const float*) const {
    PbArrayOfInt indices;
    if (period.getValue() < 1) {
        PoDebugError::post("PoPeriodIndexFilter::getFilteredIndices",
                           "period must be at least 1, not %d", period.getValue());
        return indices;
    }
    for (int i = std::max(0, firstIndex.getValue()); i < numNodes; i += period.getValue())
        indices.add(i);
    return indices;
}
