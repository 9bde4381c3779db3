#include <Quillon/nodes/PoLabelHints.h>

#include <Quillon/nodes/PoLabelHintsElement.h>

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoLabelHints, PoNode)

PoLabelHints::PoLabelHints() {
    SO_NODE_CONSTRUCTOR(PoLabelHints);
    SO_NODE_ADD_FIELD(labelPath, (PATH_DEPEND));
    SO_NODE_ADD_FIELD(justification, (JUSTIFICATION_DEPEND));
    SO_NODE_ADD_FIELD(labelText, (""));
    SO_NODE_ADD_FIELD(labelStep, (0));
    SO_NODE_ADD_FIELD(firstLabel, (0));
    SO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_RIGHT);
    SO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_LEFT);
    SO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_UP);
    SO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_DOWN);
    SO_NODE_DEFINE_ENUM_VALUE(LabelPath, PATH_DEPEND);
    SO_NODE_SET_SF_ENUM_TYPE(labelPath, LabelPath);
    SO_NODE_DEFINE_ENUM_VALUE(Justification, LEFT);
    SO_NODE_DEFINE_ENUM_VALUE(Justification, RIGHT);
    SO_NODE_DEFINE_ENUM_VALUE(Justification, CENTER);
    SO_NODE_DEFINE_ENUM_VALUE(Justification, JUSTIFICATION_DEPEND);
    SO_NODE_SET_SF_ENUM_TYPE(justification, Justification);
}

PoLabelHints::~PoLabelHints() = default;

void PoLabelHints::doAction(SoAction* action) {
    PoLabelHintsElement::set(action->getState(), this, static_cast<LabelPath>(labelPath.getValue()),
                             static_cast<Justification>(justification.getValue()),
                             labelText.getValue(), labelStep.getValue(), firstLabel.getValue());
}
