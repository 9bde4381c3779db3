#include <Quillon/nodes/PoIsovaluesListElement.h>

PO_POINTER_ELEMENT_SOURCE(PoIsovaluesListElement, PbIsovaluesList)
