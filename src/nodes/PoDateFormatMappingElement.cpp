#include <Quillon/nodes/PoDateFormatMappingElement.h>

PO_POINTER_ELEMENT_SOURCE(PoDateFormatMappingElement, PbDateFormatMapping)
