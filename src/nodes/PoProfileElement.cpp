#include <Quillon/nodes/PoProfileElement.h>

PO_POINTER_ELEMENT_SOURCE(PoProfileElement, PoProfile)
