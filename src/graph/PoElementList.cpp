#include "graph/PoElementList.h"

#include <Quillon/nodes/PoBevelEdgeElement.h>
#include <Quillon/nodes/PoCellFilterElement.h>
#include <Quillon/nodes/PoDataMappingElement.h>
#include <Quillon/nodes/PoDateFormatMappingElement.h>
#include <Quillon/nodes/PoDomainElement.h>
#include <Quillon/nodes/PoIsovaluesListElement.h>
#include <Quillon/nodes/PoLabelHintsElement.h>
#include <Quillon/nodes/PoMesh1DFilterElement.h>
#include <Quillon/nodes/PoMesh1DHintsElement.h>
#include <Quillon/nodes/PoMeshElement.h>
#include <Quillon/nodes/PoMiscTextAttrElement.h>
#include <Quillon/nodes/PoNumericDisplayFormatElement.h>
#include <Quillon/nodes/PoProfileElement.h>

namespace {
const PoClassRegistration::ClassEntry s_elementClasses[] = {
    PO_CLASS_ENTRY(PoDomainElement),        PO_CLASS_ENTRY(PoNumericDisplayFormatElement),
    PO_CLASS_ENTRY(PoIsovaluesListElement), PO_CLASS_ENTRY(PoDateFormatMappingElement),
    PO_CLASS_ENTRY(PoMiscTextAttrElement),  PO_CLASS_ENTRY(PoDataMappingElement),
    PO_CLASS_ENTRY(PoCellFilterElement),    PO_CLASS_ENTRY(PoMeshElement),
    PO_CLASS_ENTRY(PoBevelEdgeElement),     PO_CLASS_ENTRY(PoMesh1DFilterElement),
    PO_CLASS_ENTRY(PoMesh1DHintsElement),   PO_CLASS_ENTRY(PoProfileElement),
    PO_CLASS_ENTRY(PoLabelHintsElement),
};
} // namespace

void PoElementList::initClasses(void) {
    PoClassRegistration::initAll(s_elementClasses);
}

void PoElementList::exitClasses(void) {
    PoClassRegistration::exitAllReversed(s_elementClasses);
}
