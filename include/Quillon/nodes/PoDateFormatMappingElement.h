#pragma once
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbDateFormatMapping;

// The date format mapping; null when no node set one.
class PoDateFormatMappingElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoDateFormatMappingElement, PbDateFormatMapping);
};
