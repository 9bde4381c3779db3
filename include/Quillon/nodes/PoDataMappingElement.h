#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbDataMapping;

// The data mapping; null when no node set one.
class QUILLON_API PoDataMappingElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoDataMappingElement, PbDataMapping);
};
