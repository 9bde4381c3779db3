#include "platform/SoTextOutlineEnabledElement.h"

#include <Inventor/actions/SoGLRenderAction.h>

SO_ELEMENT_SOURCE(SoTextOutlineEnabledElement);

void SoTextOutlineEnabledElement::initClass() {
    SO_ELEMENT_INIT_CLASS(SoTextOutlineEnabledElement, SoInt32Element);
    SO_ENABLE(SoGLRenderAction, SoTextOutlineEnabledElement);
}

SoTextOutlineEnabledElement::~SoTextOutlineEnabledElement() = default;

void SoTextOutlineEnabledElement::init(SoState* state) {
    SoInt32Element::init(state);
    data = getDefault();
}

void SoTextOutlineEnabledElement::set(SoState* state, SoNode* node, SbBool enabled) {
    SoInt32Element::set(getClassStackIndex(), state, node, enabled ? 1 : 0);
}

SbBool SoTextOutlineEnabledElement::get(SoState* state) {
    return SoInt32Element::get(getClassStackIndex(), state) != 0;
}
