#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/fields/SoSFString.h>

// How the kits below place their labels: the writing path, the
// justification, a text drawn beside each label, and which labels are
// drawn (one every `labelStep`, from `firstLabel`; a step of 0 lets the
// kit choose).  The DEPEND values leave the choice to the kit.
class QUILLON_API PoLabelHints : public PoNode {
    PO_NODE_HEADER(PoLabelHints);

public:
    enum LabelPath { PATH_RIGHT = 0, PATH_LEFT = 1, PATH_UP = 2, PATH_DOWN = 3, PATH_DEPEND = 4 };
    enum Justification { LEFT = 0, RIGHT = 1, CENTER = 2, JUSTIFICATION_DEPEND = 3 };

    SoSFEnum labelPath;
    SoSFEnum justification;
    SoSFString labelText;
    SoSFInt32 labelStep;
    SoSFInt32 firstLabel;

    PoLabelHints();
    void doAction(SoAction* action) override;

protected:
    ~PoLabelHints() override;
};
