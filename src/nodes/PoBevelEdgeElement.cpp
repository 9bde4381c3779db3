#include <Quillon/nodes/PoBevelEdgeElement.h>

PO_ELEMENT_SOURCE(PoBevelEdgeElement, SoReplacedElement)

PoBevelEdgeElement::~PoBevelEdgeElement() = default;

void PoBevelEdgeElement::init(SoState* state) {
    SoReplacedElement::init(state);
    m_values = getDefault();
}

void PoBevelEdgeElement::set(SoState* state, SoNode* node, int on, float radius,
                             PoBevelEdge::RadiusFlag radiusFlag, float angle) {
    auto* element = PO_WRITABLE_ELEMENT(PoBevelEdgeElement, state, node);
    if (element)
        element->m_values = {on, radius, radiusFlag, angle};
}

void PoBevelEdgeElement::get(SoState* state, int& on, float& radius,
                             PoBevelEdge::RadiusFlag& radiusFlag, float& angle) {
    const auto* element = PoClassRegistration::readableElement<PoBevelEdgeElement>(state);
    const Values values = element ? element->m_values : getDefault();
    on = values.on;
    radius = values.radius;
    radiusFlag = values.radiusFlag;
    angle = values.angle;
}
