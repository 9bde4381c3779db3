#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbDateFormatMapping;

// The date format mapping; null when no node set one.
class QUILLON_API PoDateFormatMappingElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoDateFormatMappingElement, PbDateFormatMapping);
};
