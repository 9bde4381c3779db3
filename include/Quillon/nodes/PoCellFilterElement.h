#pragma once
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PoCellFilter;

// The cell filter node; null when none was met.
class PoCellFilterElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoCellFilterElement, PoCellFilter);
};
