#include <Quillon/nodes/PoPeriodFilter.h>

#include <Quillon/graph/PoDebugError.h>

#include <cmath>
#include <set>

PO_NODE_SOURCE(PoPeriodFilter, PoMesh1DFilter)

PoPeriodFilter::PoPeriodFilter() {
    SO_NODE_CONSTRUCTOR(PoPeriodFilter);
    SO_NODE_ADD_FIELD(start, (0.0f));
    SO_NODE_ADD_FIELD(period, (1.0f));
}

PoPeriodFilter::~PoPeriodFilter() = default;

PbArrayOfInt PoPeriodFilter::getFilteredIndices(int numNodes, const float* coordinates) const {
    PbArrayOfInt indices;
    if (!(period.getValue() > 0.0f)) {
        PoDebugError::post("PoPeriodFilter::getFilteredIndices", "period must be positive, not %g",
                           period.getValue());
        return indices;
    }
    if (!coordinates)
        return indices;
    std::set<double> periodsSeen;
    for (int i = 0; i < numNodes; ++i) {
        const double offset = coordinates[i] - static_cast<double>(start.getValue());
        if (offset < 0.0)
            continue;
        if (periodsSeen.insert(std::floor(offset / period.getValue())).second)
            indices.add(i);
    }
    return indices;
}
