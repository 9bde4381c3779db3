#include <Quillon/nodes/PoCellFilterElement.h>

#include <Quillon/nodes/PoCellFilter.h>

PO_POINTER_ELEMENT_SOURCE(PoCellFilterElement, PoCellFilter)

void PoCellFilterElement::set(SoState* state, PoCellFilter* filter) {
    set(state, filter, filter);
}
