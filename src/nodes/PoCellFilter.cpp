#include <Quillon/nodes/PoCellFilter.h>

#include <Quillon/nodes/PoCellFilterElement.h>

#include <Inventor/actions/SoAction.h>

PO_NODE_ABSTRACT_SOURCE(PoCellFilter, PoNode)

PoCellFilter::PoCellFilter() {
    SO_NODE_CONSTRUCTOR(PoCellFilter);
}

PoCellFilter::~PoCellFilter() = default;

void PoCellFilter::doAction(SoAction* action) {
    PoCellFilterElement::set(action->getState(), this);
}
