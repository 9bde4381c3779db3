#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PoCellFilter;

// The cell filter node; null when none was met.
class QUILLON_API PoCellFilterElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoCellFilterElement, PoCellFilter);

public:
    // The filter node is both the node that sets the element and its value.
    static void set(SoState* state, PoCellFilter* filter);
};
