#include <Quillon/3Ddata/PoVolumwright.h>

#include <Quillon/Quillon.h>

#include "graph/PoClassManifest.h"

PO_KIT_ABSTRACT_SOURCE(PoVolumwright, PoBase)

namespace {
#define PO_REPRESENTATION_ENTRY(_class_, _group_) PO_CLASS_ENTRY(_class_)
#define PO_REPRESENTATION_EXIT_GROUP(_class_, _group_) PoClassManifest::ExitGroup::_group_,

const PoClassManifest::Entry s_representationClasses[] = {
    PO_MESH_REPRESENTATION_CLASSES(PO_REPRESENTATION_ENTRY)};
const std::vector<PoClassManifest::ExitGroup> s_exitGroups = {
    PO_MESH_REPRESENTATION_CLASSES(PO_REPRESENTATION_EXIT_GROUP)};
} // namespace

void PoVolumwright::initClasses(void) {
    PoClassManifest::initAll(s_representationClasses);
}

void PoVolumwright::exitClasses(void) {
    for (size_t i : PoClassManifest::exitOrder(s_exitGroups))
        s_representationClasses[i].exit();
}

PoVolumwright::PoVolumwright() {
    PoBase::init();
    SO_KIT_CONSTRUCTOR(PoVolumwright);
    SO_KIT_INIT_INSTANCE();
}

PoVolumwright::~PoVolumwright() {
    PoBase::finish();
}
