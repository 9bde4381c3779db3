#include <Quillon/nodes/PoMiscTextAttrElement.h>

#include <Quillon/graph/PbMiscTextAttr.h>

PO_POINTER_ELEMENT_SOURCE_WITH_DEFAULT(PoMiscTextAttrElement, PbMiscTextAttr, new PbMiscTextAttr)
