#include "graph/PoElementList.h"

#include <Quillon/Quillon.h>

#include "graph/PoClassManifest.h"

namespace {
const PoClassManifest::Entry s_elementClasses[] = {PO_ELEMENT_CLASSES(PO_CLASS_ENTRY)};
} // namespace

void PoElementList::initClasses(void) {
    PoClassManifest::initAll(s_elementClasses);
}

void PoElementList::exitClasses(void) {
    PoClassManifest::exitAllReversed(s_elementClasses);
}
