#include <Quillon/nodes/PoDomainElement.h>

PO_POINTER_ELEMENT_SOURCE_WITH_DEFAULT(PoDomainElement, PbDomain, new PbDomain)
