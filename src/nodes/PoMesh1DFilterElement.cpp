#include <Quillon/nodes/PoMesh1DFilterElement.h>

PO_POINTER_ELEMENT_SOURCE(PoMesh1DFilterElement, PoMesh1DFilter)
