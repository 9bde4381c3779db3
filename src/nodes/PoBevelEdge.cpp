#include <Quillon/nodes/PoBevelEdge.h>

#include <Quillon/nodes/PoBevelEdgeElement.h>

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoBevelEdge, PoNode)

PoBevelEdge::PoBevelEdge() {
    SO_NODE_CONSTRUCTOR(PoBevelEdge);
    const PoBevelEdgeElement::Values defaults = PoBevelEdgeElement::getDefault();
    SO_NODE_ADD_FIELD(on, (defaults.on != 0));
    SO_NODE_ADD_FIELD(radius, (defaults.radius));
    SO_NODE_ADD_FIELD(radiusFlag, (defaults.radiusFlag));
    SO_NODE_ADD_FIELD(angle, (defaults.angle));
    SO_NODE_DEFINE_ENUM_VALUE(RadiusFlag, ABSOLUTE_RADIUS);
    SO_NODE_DEFINE_ENUM_VALUE(RadiusFlag, RELATIVE_RADIUS);
    SO_NODE_SET_SF_ENUM_TYPE(radiusFlag, RadiusFlag);
}

PoBevelEdge::~PoBevelEdge() = default;

void PoBevelEdge::doAction(SoAction* action) {
    PoBevelEdgeElement::set(action->getState(), this, on.getValue() ? 1 : 0, radius.getValue(),
                            static_cast<RadiusFlag>(radiusFlag.getValue()), angle.getValue());
}
