#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbArrayOfInt.h>
#include <Quillon/nodes/PoNode.h>

// Chooses which nodes of a line mesh the representations below use, for
// example every tenth point of a long time series.
class QUILLON_API PoMesh1DFilter : public PoNode {
    PO_NODE_ABSTRACT_HEADER(PoMesh1DFilter);

public:
    // The indices, ascending, of the nodes kept among numNodes nodes whose
    // coordinates (ascending or not) are given.
    virtual PbArrayOfInt getFilteredIndices(int numNodes, const float* coordinates) const = 0;

    void doAction(SoAction* action) override;

protected:
    PoMesh1DFilter();
    ~PoMesh1DFilter() override;
};
