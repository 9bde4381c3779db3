#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbMiscTextAttr;

// The text attributes; default attributes when no node set them.
class QUILLON_API PoMiscTextAttrElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoMiscTextAttrElement, PbMiscTextAttr);
};
