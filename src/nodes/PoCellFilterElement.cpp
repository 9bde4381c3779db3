#include <Quillon/nodes/PoCellFilterElement.h>

PO_POINTER_ELEMENT_SOURCE(PoCellFilterElement, PoCellFilter)
