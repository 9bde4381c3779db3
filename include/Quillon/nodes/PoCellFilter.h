#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoNode.h>

// Decides which cells of a mesh the representations below draw.
class QUILLON_API PoCellFilter : public PoNode {
    PO_NODE_ABSTRACT_HEADER(PoCellFilter);

public:
    // True when the cell of that index, whose value is cellValue, is drawn.
    virtual SbBool acceptCell(int cellIndex, float cellValue) const = 0;

    void doAction(SoAction* action) override;

protected:
    PoCellFilter();
    ~PoCellFilter() override;
};
