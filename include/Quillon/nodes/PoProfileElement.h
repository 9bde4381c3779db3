#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PoProfile;

// The profile node; null when none was met.
class QUILLON_API PoProfileElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoProfileElement, PoProfile);
};
