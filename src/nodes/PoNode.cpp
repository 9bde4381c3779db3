#include <Quillon/nodes/PoNode.h>

#include <Quillon/Quillon.h>

#include "graph/PoClassManifest.h"

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>

PO_NODE_ABSTRACT_SOURCE(PoNode, SoNode)

namespace {
const PoClassManifest::Entry s_nodeClasses[] = {PO_PROPERTY_NODE_CLASSES(PO_CLASS_ENTRY)};
} // namespace

void PoNode::initClasses(void) {
    PoClassManifest::initAll(s_nodeClasses);
}

void PoNode::exitClasses(void) {
    PoClassManifest::exitAllReversed(s_nodeClasses);
}

PoNode::PoNode() {
    if (!PoBase::isInitialized()) {
        PoClassRegistration::checkLibraryInitialized("PoNode::PoNode", "a Quillon node");
        PoBase::init();
        m_holdsLibrary = true;
    }
    SO_NODE_CONSTRUCTOR(PoNode);
}

PoNode::~PoNode() {
    if (m_holdsLibrary)
        PoBase::finish();
}

void PoNode::doAction(SoAction*) {}

void PoNode::callback(SoCallbackAction* action) {
    doAction(action);
}

void PoNode::GLRender(SoGLRenderAction* action) {
    doAction(action);
}

void PoNode::getBoundingBox(SoGetBoundingBoxAction* action) {
    doAction(action);
}

void PoNode::getMatrix(SoGetMatrixAction* action) {
    doAction(action);
}

void PoNode::handleEvent(SoHandleEventAction* action) {
    doAction(action);
}

void PoNode::pick(SoPickAction* action) {
    doAction(action);
}

void PoNode::getPrimitiveCount(SoGetPrimitiveCountAction* action) {
    doAction(action);
}

void PoNode::search(SoSearchAction* action) {
    doAction(action);
    SoNode::search(action);
}

void PoNode::write(SoWriteAction* action) {
    doAction(action);
    if (PoBase::getNodeWriteFormat() == PoBase::FOLD_NODE_WRITE_FORMAT)
        SoNode::write(action);
}
