#include <Quillon/nodes/PoMesh1DHintsElement.h>

PO_ELEMENT_SOURCE(PoMesh1DHintsElement, SoReplacedElement)

PoMesh1DHintsElement::~PoMesh1DHintsElement() = default;

void PoMesh1DHintsElement::init(SoState* state) {
    SoReplacedElement::init(state);
    m_interpretation = getDefault();
}

void PoMesh1DHintsElement::set(SoState* state, SoNode* node,
                               PoMesh1DHints::GeomInterpretation interpretation) {
    auto* element = PO_WRITABLE_ELEMENT(PoMesh1DHintsElement, state, node);
    if (element)
        element->m_interpretation = interpretation;
}

PoMesh1DHints::GeomInterpretation PoMesh1DHintsElement::get(SoState* state) {
    const auto* element = PoClassRegistration::readableElement<PoMesh1DHintsElement>(state);
    return element ? element->m_interpretation : getDefault();
}
