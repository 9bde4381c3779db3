#include <Quillon/nodes/PoSFMesh.h>

#include <Quillon/graph/PoClassRegistration.h>

SoType PoSFMesh::s_classTypeId;

namespace {
// The mesh field types in their order of registration; unregistration runs
// the list backwards.
const PoClassRegistration::ClassEntry s_meshFieldClasses[] = {
    PO_CLASS_ENTRY(PoSFMesh),
};
} // namespace

SoType PoSFMesh::getClassTypeId(void) {
    return s_classTypeId;
}

void PoSFMesh::initClass(void) {
    PoClassRegistration::Guard guard;
    PoClassRegistration::ensureParent("PoSFMesh", SoSField::getClassTypeId(), "SoSField",
                                      &SoSField::initClass);
    s_classTypeId = SoType::createType(SoSField::getClassTypeId(), SbName("PoSFMesh"), nullptr);
}

void PoSFMesh::exitClass(void) {
    if (!PoClassRegistration::removeType("PoSFMesh", s_classTypeId))
        return;
    s_classTypeId = SoType::badType();
}

void PoSFMesh::initClasses(void) {
    PoClassRegistration::initAll(s_meshFieldClasses);
}

void PoSFMesh::exitClasses(void) {
    PoClassRegistration::exitAllReversed(s_meshFieldClasses);
}

PoSFMesh::PoSFMesh() = default;

PoSFMesh::~PoSFMesh() = default;
