#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbNumericDisplayFormat;

// The numeric display format; a default automatic format when no node set one.
class QUILLON_API PoNumericDisplayFormatElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoNumericDisplayFormatElement, PbNumericDisplayFormat);
};
