#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/elements/SoReplacedElement.h>

class PbIsovaluesList;

// The list of isovalues; null when no node set one.
class QUILLON_API PoIsovaluesListElement : public SoReplacedElement {
    PO_POINTER_ELEMENT_HEADER(PoIsovaluesListElement, PbIsovaluesList);
};
