#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoCellFilter.h>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFFloat.h>

// Accepts the cells whose value lies in the closed interval [min, max],
// or, with `in` set to FALSE, those whose value lies outside it.
class QUILLON_API PoIntervalCellFilter : public PoCellFilter {
    PO_NODE_HEADER(PoIntervalCellFilter);

public:
    SoSFFloat min;
    SoSFFloat max;
    SoSFBool in;

    PoIntervalCellFilter();
    SbBool acceptCell(int cellIndex, float cellValue) const override;

protected:
    ~PoIntervalCellFilter() override;
};
