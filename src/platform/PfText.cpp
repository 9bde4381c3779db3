#include "platform/PfText.h"

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoDrawStyleElement.h>
#include <Inventor/elements/SoTextOutlineEnabledElement.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoText3.h>

namespace {
bool isOutlining(SoState* state) {
    return state->isElementEnabled(SoTextOutlineEnabledElement::getClassStackIndex()) &&
           SoTextOutlineEnabledElement::get(state);
}

// The text to outline is the sibling just before the pass, found through
// the path so that copies of the holder outline their own text.
SoText3* precedingText(SoAction* action) {
    const SoPath* path = action->getCurPath();
    if (path->getLength() < 2)
        return nullptr;
    const int index = path->getIndexFromTail(0);
    SoNode* parent = path->getNodeFromTail(1);
    SoChildList* children = parent->getChildren();
    if (index < 1 || !children)
        return nullptr;
    SoNode* previous = (*children)[index - 1];
    return previous->isOfType(SoText3::getClassTypeId()) ? static_cast<SoText3*>(previous)
                                                         : nullptr;
}

void outlinePass(void*, SoAction* action) {
    if (!action->isOfType(SoGLRenderAction::getClassTypeId()) || !isOutlining(action->getState()))
        return;
    SoText3* text = precedingText(action);
    if (!text)
        return;
    SoState* state = action->getState();
    state->push();
    SoDrawStyleElement::set(state, SoDrawStyleElement::LINES);
    text->GLRender(static_cast<SoGLRenderAction*>(action));
    state->pop();
}
} // namespace

SoSeparator* PfText::createHolder(bool annotation) {
    return annotation ? new SoAnnotation : new SoSeparator;
}

void PfText::addOutlinedText(SoGroup* holder, SoText3* text) {
    holder->addChild(text);
    auto* pass = new SoCallback;
    pass->setCallback(&outlinePass, nullptr);
    holder->addChild(pass);
}
