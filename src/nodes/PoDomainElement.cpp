#include <Quillon/nodes/PoDomainElement.h>

#include <Quillon/graph/PbDomain.h>

PO_POINTER_ELEMENT_SOURCE_WITH_DEFAULT(PoDomainElement, PbDomain, new PbDomain)
