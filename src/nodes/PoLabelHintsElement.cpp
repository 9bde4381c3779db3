#include <Quillon/nodes/PoLabelHintsElement.h>

PO_ELEMENT_SOURCE(PoLabelHintsElement, SoReplacedElement)

PoLabelHintsElement::~PoLabelHintsElement() = default;

void PoLabelHintsElement::reset() {
    m_labelStep = getDefault(m_path, m_justification, m_text);
    m_firstLabel = 0;
}

void PoLabelHintsElement::init(SoState* state) {
    SoReplacedElement::init(state);
    reset();
}

void PoLabelHintsElement::set(SoState* state, SoNode* node, PoLabelHints::LabelPath path,
                              PoLabelHints::Justification justification, const char* text,
                              int labelStep, int firstLabel) {
    set(state, node, path, justification, SbString(text ? text : ""), labelStep, firstLabel);
}

void PoLabelHintsElement::set(SoState* state, SoNode* node, PoLabelHints::LabelPath path,
                              PoLabelHints::Justification justification, const SbString& text,
                              int labelStep, int firstLabel) {
    auto* element = PO_WRITABLE_ELEMENT(PoLabelHintsElement, state, node);
    if (!element)
        return;
    element->m_path = path;
    element->m_justification = justification;
    element->m_text = text;
    element->m_labelStep = labelStep;
    element->m_firstLabel = firstLabel;
}

const PoLabelHintsElement* PoLabelHintsElement::getReadable(SoState* state) {
    return PoClassRegistration::readableElement<PoLabelHintsElement>(state);
}

int PoLabelHintsElement::get(SoState* state, PoLabelHints::LabelPath& path,
                             PoLabelHints::Justification& justification, SbString& text) {
    const PoLabelHintsElement* element = getReadable(state);
    if (!element)
        return getDefault(path, justification, text);
    path = element->m_path;
    justification = element->m_justification;
    text = element->m_text;
    return element->m_labelStep;
}

int PoLabelHintsElement::getFirstLabel(SoState* state) {
    const PoLabelHintsElement* element = getReadable(state);
    return element ? element->m_firstLabel : 0;
}

int PoLabelHintsElement::getDefault(PoLabelHints::LabelPath& path,
                                    PoLabelHints::Justification& justification, SbString& text) {
    path = PoLabelHints::PATH_DEPEND;
    justification = PoLabelHints::JUSTIFICATION_DEPEND;
    text.makeEmpty();
    return 0;
}
