#include <Quillon/nodes/PoSFMesh.h>

#include <Quillon/Quillon.h>

#include "graph/PoClassManifest.h"
#include "nodes/PiMeshReader.h"
#include "nodes/PiMeshSets.h"
#include "nodes/PiMeshWriter.h"

#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/graph/PoClassRegistration.h>

#include <Inventor/errors/SoDebugError.h>

SoType PoSFMesh::s_classTypeId;

namespace {
const PoClassManifest::Entry s_meshFieldClasses[] = {PO_MESH_FIELD_CLASSES(PO_CLASS_ENTRY)};
} // namespace

SoType PoSFMesh::getClassTypeId(void) {
    return s_classTypeId;
}

void PoSFMesh::registerType(SoType& type, const char* name, SoType::instantiationMethod create) {
    PoClassRegistration::Guard guard;
    if (type != SoType::badType())
        return;
    PoClassRegistration::ensureParent(name, PoSFMesh::getClassTypeId(), "PoSFMesh",
                                      &PoSFMesh::initClass);
    type = SoType::createType(PoSFMesh::getClassTypeId(), SbName(name), create);
}

void PoSFMesh::unregisterType(SoType& type, const char* name) {
    if (PoClassRegistration::removeType(name, type))
        type = SoType::badType();
}

void PoSFMesh::checkRegistered(const SoType& type, const char* name, void (*initClass)(void)) {
    if (type != SoType::badType())
        return;
    SbString method(name);
    method += "::";
    method += name;
    SoDebugError::post(method.getString(),
                       "Can't construct a field of type %s until initClass() has been called",
                       name);
    PoClassRegistration::checkLibraryInitialized(method.getString(), name);
    initClass();
}

void PoSFMesh::initClass(void) {
    PoClassRegistration::Guard guard;
    if (s_classTypeId != SoType::badType())
        return;
    PoClassRegistration::ensureParent("PoSFMesh", SoSField::getClassTypeId(), "SoSField",
                                      &SoSField::initClass);
    s_classTypeId = SoType::createType(SoSField::getClassTypeId(), SbName("PoSFMesh"), nullptr);
}

void PoSFMesh::exitClass(void) {
    unregisterType(s_classTypeId, "PoSFMesh");
}

void PoSFMesh::initClasses(void) {
    PoClassManifest::initAll(s_meshFieldClasses);
}

void PoSFMesh::exitClasses(void) {
    PoClassManifest::exitAllReversed(s_meshFieldClasses);
}

PoSFMesh::PoSFMesh() = default;

PoSFMesh::~PoSFMesh() = default;

template <typename Change>
void PoSFMesh::changeSet(unsigned int (PbMesh::*dataSetId)(int) const, int setIndex,
                         Change change) {
    PbMesh* mesh = getMesh();
    const unsigned int before = (mesh->*dataSetId)(setIndex);
    change(*mesh);
    // A set that was added draws a new id; a refused one keeps the old.
    if ((mesh->*dataSetId)(setIndex) != before)
        valueChanged();
}

void PoSFMesh::addValuesSet(int setIndex, const float* values, const SbString& name) {
    changeSet(&PbMesh::getFltDataSetId, setIndex,
              [&](PbMesh& mesh) { mesh.addValuesSet(setIndex, values, name); });
}

void PoSFMesh::addValuesSet(int setIndex, const float* values, PoMeshProperty::DataBinding binding,
                            const SbString& name) {
    changeSet(&PbMesh::getFltDataSetId, setIndex, [&](PbMesh& mesh) {
        mesh.addValuesSet(setIndex, values, static_cast<PbMesh::DataBinding>(binding), name);
    });
}

void PoSFMesh::addStringsSet(int setIndex, const SbString* strings, const SbString& name) {
    changeSet(&PbMesh::getStrDataSetId, setIndex,
              [&](PbMesh& mesh) { mesh.addStringsSet(setIndex, strings, name); });
}

void PoSFMesh::addVecsSet(int setIndex, const SbVec3f* vecs, const SbString& name) {
    changeSet(&PbMesh::getVecDataSetId, setIndex,
              [&](PbMesh& mesh) { mesh.addVecsSet(setIndex, vecs, name); });
}

bool PoSFMesh::isSameMesh(const PbMesh& mesh) const {
    return sameGeometry(getHeldMesh(), mesh) && PiMeshSets::same(getHeldMesh(), mesh);
}

void PoSFMesh::setMeshValue(const PbMesh& mesh) {
    if (!m_sameValueNotification && getContainer() && isSameMesh(mesh))
        return;
    if (mesh.isDataDuplicated()) {
        assignMesh(mesh);
    } else {
        // A mesh that references its caller's arrays is rebuilt as one that
        // owns copies of them.
        std::unique_ptr<PbMesh> copy = newMesh();
        copyGeometry(mesh, *copy);
        PiMeshSets::copy(mesh, *copy);
        assignMesh(*copy);
    }
    valueChanged();
}

void PoSFMesh::writeValue(SoOutput* out) const {
    PiMeshWriter writer(out);
    writer.begin();
    writeHeader(writer, getHeldMesh());
    writer.writeSets(getHeldMesh());
    writer.end();
}

SbBool PoSFMesh::readValue(SoInput* in) {
    const char* typeName = getTypeId().getName().getString();
    PiMeshReader reader(in, typeName);
    std::unique_ptr<PbMesh> mesh = newMesh();
    const unsigned int emptyGeometry = mesh->getGeometryId();
    if (!readHeader(reader, *mesh))
        return FALSE;
    // The checks of the reader leave nothing for the mesh to refuse; this
    // keeps a mesh that did from being taken as read.
    if (mesh->getGeometryId() == emptyGeometry)
        return reader.fail("the mesh refused the geometry read");
    const bool complete = reader.readSets(*mesh);
    assignMesh(*mesh);
    // The toolkit signals a value read whole; one read in part changed too.
    if (!complete)
        valueChanged();
    return complete;
}
