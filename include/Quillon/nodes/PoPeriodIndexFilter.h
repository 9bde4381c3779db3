#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMesh1DFilter.h>

#include <Inventor/fields/SoSFInt32.h>

// Keeps one node every `period` nodes, from `firstIndex` on.
class QUILLON_API PoPeriodIndexFilter : public PoMesh1DFilter {
    PO_NODE_HEADER(PoPeriodIndexFilter);

public:
    SoSFInt32 firstIndex;
    SoSFInt32 period;

    PoPeriodIndexFilter();
    PbArrayOfInt getFilteredIndices(int numNodes, const float* coordinates) const override;

protected:
    ~PoPeriodIndexFilter() override;
};
