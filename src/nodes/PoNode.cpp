#include <Quillon/nodes/PoNode.h>

#include <Quillon/graph/PoBase.h>
#include <Quillon/nodes/PoBevelEdge.h>
#include <Quillon/nodes/PoCartesianGrid2D.h>
#include <Quillon/nodes/PoCartesianGrid3D.h>
#include <Quillon/nodes/PoCircularProfile.h>
#include <Quillon/nodes/PoCoordinateListFilter.h>
#include <Quillon/nodes/PoDateFormatMapping.h>
#include <Quillon/nodes/PoDomain.h>
#include <Quillon/nodes/PoEllipticProfile.h>
#include <Quillon/nodes/PoHexahedronMesh3D.h>
#include <Quillon/nodes/PoIndexListFilter.h>
#include <Quillon/nodes/PoIndexedMesh2D.h>
#include <Quillon/nodes/PoIndexedMesh3D.h>
#include <Quillon/nodes/PoIntervalCellFilter.h>
#include <Quillon/nodes/PoIrregularMesh1D.h>
#include <Quillon/nodes/PoIsovaluesList.h>
#include <Quillon/nodes/PoLabelHints.h>
#include <Quillon/nodes/PoLinearDataMapping.h>
#include <Quillon/nodes/PoMesh1DHints.h>
#include <Quillon/nodes/PoMiscTextAttr.h>
#include <Quillon/nodes/PoNonLinearDataMapping.h>
#include <Quillon/nodes/PoNonLinearDataMapping2.h>
#include <Quillon/nodes/PoNumericDisplayFormat.h>
#include <Quillon/nodes/PoParalCartesianGrid2D.h>
#include <Quillon/nodes/PoParalCartesianGrid3D.h>
#include <Quillon/nodes/PoPeriodFilter.h>
#include <Quillon/nodes/PoPeriodIndexFilter.h>
#include <Quillon/nodes/PoPolarGrid2D.h>
#include <Quillon/nodes/PoProfileCoordinate2.h>
#include <Quillon/nodes/PoQuadrangleMesh2D.h>
#include <Quillon/nodes/PoRegularCartesianGrid2D.h>
#include <Quillon/nodes/PoRegularCartesianGrid3D.h>
#include <Quillon/nodes/PoRegularMesh1D.h>
#include <Quillon/nodes/PoSquareProfile.h>
#include <Quillon/nodes/PoTetrahedronMesh3D.h>
#include <Quillon/nodes/PoTriangleMesh2D.h>

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
// The property nodes in their order of registration; unregistration runs
// the list backwards.
const PoClassRegistration::ClassEntry s_nodeClasses[] = {
    PO_CLASS_ENTRY(PoNode),
    PO_CLASS_ENTRY(PoDomain),
    PO_CLASS_ENTRY(PoNumericDisplayFormat),
    PO_CLASS_ENTRY(PoIsovaluesList),
    PO_CLASS_ENTRY(PoDateFormatMapping),
    PO_CLASS_ENTRY(PoMiscTextAttr),
    PO_CLASS_ENTRY(PoDataMapping),
    PO_CLASS_ENTRY(PoLinearDataMapping),
    PO_CLASS_ENTRY(PoNonLinearDataMapping),
    PO_CLASS_ENTRY(PoNonLinearDataMapping2),
    PO_CLASS_ENTRY(PoMeshProperty),
    PO_CLASS_ENTRY(PoCartesianGrid3D),
    PO_CLASS_ENTRY(PoParalCartesianGrid3D),
    PO_CLASS_ENTRY(PoRegularCartesianGrid3D),
    PO_CLASS_ENTRY(PoIndexedMesh3D),
    PO_CLASS_ENTRY(PoHexahedronMesh3D),
    PO_CLASS_ENTRY(PoTetrahedronMesh3D),
    PO_CLASS_ENTRY(PoCartesianGrid2D),
    PO_CLASS_ENTRY(PoParalCartesianGrid2D),
    PO_CLASS_ENTRY(PoRegularCartesianGrid2D),
    PO_CLASS_ENTRY(PoPolarGrid2D),
    PO_CLASS_ENTRY(PoIndexedMesh2D),
    PO_CLASS_ENTRY(PoTriangleMesh2D),
    PO_CLASS_ENTRY(PoQuadrangleMesh2D),
    PO_CLASS_ENTRY(PoIrregularMesh1D),
    PO_CLASS_ENTRY(PoRegularMesh1D),
    PO_CLASS_ENTRY(PoBevelEdge),
    PO_CLASS_ENTRY(PoMesh1DFilter),
    PO_CLASS_ENTRY(PoPeriodIndexFilter),
    PO_CLASS_ENTRY(PoIndexListFilter),
    PO_CLASS_ENTRY(PoPeriodFilter),
    PO_CLASS_ENTRY(PoCoordinateListFilter),
    PO_CLASS_ENTRY(PoMesh1DHints),
    PO_CLASS_ENTRY(PoProfile),
    PO_CLASS_ENTRY(PoCircularProfile),
    PO_CLASS_ENTRY(PoEllipticProfile),
    PO_CLASS_ENTRY(PoSquareProfile),
    PO_CLASS_ENTRY(PoProfileCoordinate2),
    PO_CLASS_ENTRY(PoLabelHints),
    PO_CLASS_ENTRY(PoCellFilter),
    PO_CLASS_ENTRY(PoIntervalCellFilter),
};
} // namespace

void PoNode::initClasses(void) {
    PoClassRegistration::initAll(s_nodeClasses);
}

void PoNode::exitClasses(void) {
    PoClassRegistration::exitAllReversed(s_nodeClasses);
}

PoNode::PoNode() {
    SO_NODE_CONSTRUCTOR(PoNode);
}

PoNode::~PoNode() = default;

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
