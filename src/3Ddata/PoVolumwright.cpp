#include <Quillon/3Ddata/PoVolumwright.h>

PO_KIT_ABSTRACT_SOURCE(PoVolumwright, PoBase)

namespace {
// The mesh representation kits in their order of registration.
const PoClassRegistration::ClassEntry s_representationClasses[] = {
    PO_CLASS_ENTRY(PoVolumwright),
};

// Unregistration keeps an order of its own; every class still leaves
// before its parent.
const PoClassRegistration::ClassEntry s_representationExitOrder[] = {
    PO_CLASS_ENTRY(PoVolumwright),
};
} // namespace

void PoVolumwright::initClasses(void) {
    PoClassRegistration::initAll(s_representationClasses);
}

void PoVolumwright::exitClasses(void) {
    for (const PoClassRegistration::ClassEntry& entry : s_representationExitOrder)
        entry.exit();
}

PoVolumwright::PoVolumwright() {
    PoBase::init();
    SO_KIT_CONSTRUCTOR(PoVolumwright);
    SO_KIT_INIT_INSTANCE();
}

PoVolumwright::~PoVolumwright() {
    PoBase::finish();
}
