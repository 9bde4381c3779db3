#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbDomain;

// The domain of the kits below; a process-wide default domain when no PoDomain node was met.
class QUILLON_API PoDomainElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoDomainElement, PbDomain);
};
