#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMesh1DFilter.h>

#include <Inventor/fields/SoSFFloat.h>

// Keeps, in each interval [start + k period, start + (k + 1) period), the
// first node whose coordinate falls in it: one point per period of the
// coordinate (per day of a time series, say), whatever the sampling.
class QUILLON_API PoPeriodFilter : public PoMesh1DFilter {
    PO_NODE_HEADER(PoPeriodFilter);

public:
    SoSFFloat start;
    SoSFFloat period;

    PoPeriodFilter();
    PbArrayOfInt getFilteredIndices(int numNodes, const float* coordinates) const override;

protected:
    ~PoPeriodFilter() override;
};
