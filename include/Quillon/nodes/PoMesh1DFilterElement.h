#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PoMesh1DFilter;

// The filter node of line meshes; null when none was met.
class QUILLON_API PoMesh1DFilterElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoMesh1DFilterElement, PoMesh1DFilter);
};
