#include <Quillon/nodes/PoMesh1DFilter.h>

#include <Quillon/nodes/PoMesh1DFilterElement.h>

#include <Inventor/actions/SoAction.h>

PO_NODE_ABSTRACT_SOURCE(PoMesh1DFilter, PoNode)

PoMesh1DFilter::PoMesh1DFilter() {
    SO_NODE_CONSTRUCTOR(PoMesh1DFilter);
}

PoMesh1DFilter::~PoMesh1DFilter() = default;

void PoMesh1DFilter::doAction(SoAction* action) {
    PoMesh1DFilterElement::set(action->getState(), this, this);
}
