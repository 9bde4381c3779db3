#include <Quillon/nodes/PoDataMappingElement.h>

PO_POINTER_ELEMENT_SOURCE(PoDataMappingElement, PbDataMapping)
