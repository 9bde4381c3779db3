#pragma once
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PoProfile;

// The profile node; null when none was met.
class PoProfileElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoProfileElement, PoProfile);
};
