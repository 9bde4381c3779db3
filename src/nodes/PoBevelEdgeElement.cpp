#include <Quillon/nodes/PoBevelEdgeElement.h>

PO_ELEMENT_SOURCE(PoBevelEdgeElement, SoReplacedElement)

PoBevelEdgeElement::~PoBevelEdgeElement() = default;

void PoBevelEdgeElement::init(SoState* state) {
    SoReplacedElement::init(state);
    m_values = getDefault();
}

void PoBevelEdgeElement::set(SoState* state, SoNode* node, int on, float radius,
                             PoBevelEdge::RadiusFlag radiusFlag, float angle) {
    auto* element = static_cast<PoBevelEdgeElement*>(
        SoReplacedElement::getElement(state, classStackIndex, node));
    if (element)
        element->m_values = {on, radius, radiusFlag, angle};
}

void PoBevelEdgeElement::get(SoState* state, int& on, float& radius,
                             PoBevelEdge::RadiusFlag& radiusFlag, float& angle) {
    auto* element = static_cast<const PoBevelEdgeElement*>(getConstElement(state, classStackIndex));
    const Values values = element ? element->m_values : getDefault();
    on = values.on;
    radius = values.radius;
    radiusFlag = values.radiusFlag;
    angle = values.angle;
}
