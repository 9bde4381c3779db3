#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMesh1DFilter.h>

#include <Inventor/fields/SoMFInt32.h>

// Keeps the nodes whose indices are listed; indices out of range and
// repetitions are ignored.
class QUILLON_API PoIndexListFilter : public PoMesh1DFilter {
    PO_NODE_HEADER(PoIndexListFilter);

public:
    SoMFInt32 index;

    PoIndexListFilter();
    PbArrayOfInt getFilteredIndices(int numNodes, const float* coordinates) const override;

protected:
    ~PoIndexListFilter() override;
};
