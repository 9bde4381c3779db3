#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMesh1DFilter.h>

#include <Inventor/fields/SoMFFloat.h>

// Keeps, for each listed coordinate, the node whose coordinate is nearest
// (the lowest index on a tie).
class QUILLON_API PoCoordinateListFilter : public PoMesh1DFilter {
    PO_NODE_HEADER(PoCoordinateListFilter);

public:
    SoMFFloat coordinate;

    PoCoordinateListFilter();
    PbArrayOfInt getFilteredIndices(int numNodes, const float* coordinates) const override;

protected:
    ~PoCoordinateListFilter() override;
};
