#include <Quillon/3Ddata/PoMeshLevelSurf.h>

#include <Quillon/3Ddata/PbMesh3D.h>
#include <Quillon/graph/PoDebugError.h>

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoTexture2.h>

PO_KIT_SOURCE(PoMeshLevelSurf, PoMesh3D)

PoMeshLevelSurf::PoMeshLevelSurf() {
    SO_KIT_CONSTRUCTOR(PoMeshLevelSurf);
    SO_KIT_ADD_FIELD(levelValue, (0.0f));
    SO_KIT_ADD_FIELD(surfOrientation, (ORIENTED_TO_MAX));
    SO_KIT_ADD_FIELD(valuesIndexForLevel, (-1));
    SO_KIT_DEFINE_ENUM_VALUE(SurfOrientation, ORIENTED_TO_MIN);
    SO_KIT_DEFINE_ENUM_VALUE(SurfOrientation, ORIENTED_TO_MAX);
    SO_KIT_SET_SF_ENUM_TYPE(surfOrientation, SurfOrientation);
    SO_KIT_ADD_CATALOG_ENTRY(groupLevelSurf, SoGroup, TRUE, alternateRep, \x0, TRUE);
    SO_KIT_INIT_INSTANCE();
    watchFields({&levelValue, &surfOrientation, &valuesIndexForLevel});
}

PoMeshLevelSurf::~PoMeshLevelSurf() = default;

void PoMeshLevelSurf::rebuild(void) {
    RebuildScope scope(this);
    const PbMesh3D* mesh = getCurrentMesh3D();
    if (!mesh || mesh->isEmpty()) {
        setPart("appearance.texture2", nullptr);
        setPart("appearance.material", nullptr);
        setPart("groupLevelSurf", nullptr);
        setGroup(nullptr);
        clearTekNodes();
        return;
    }
    auto* group = new SoGroup;
    setGroup(group);
    clearTekNodes();
    insertDefaultShapeHints();
    meshLevelSurf(mesh);
    setPart("appearance.texture2", getSurfaceTexture());
    setPart("appearance.material", getMaterial());
    setPart("groupLevelSurf", group);
    deleteTransparencyParts(getCurrentDataMapping(), getMaterial(), getSurfaceMaterialBinding(),
                            group);
}

void PoMeshLevelSurf::setDefaultOnNonWritingFields(void) {
    PoMesh3D::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() == FOLD_NODE_WRITE_FORMAT)
        groupLevelSurf.setDefault(TRUE);
}

// The level's value set, when the mesh has it with a value for every node.
const float* PoMeshLevelSurf::getIsosurfDataSet(void) {
    const PbMesh3D* mesh = getCurrentMesh3D();
    int setIndex = getIsosurfDataSetIndex();
    if (!mesh || setIndex < 0 || !mesh->getValuesSet(setIndex))
        return nullptr;
    if (mesh->getValuesBinding(setIndex) != PbMesh::PER_NODE) {
        PoDebugError::post("PoMeshLevelSurf::rebuild",
                           "value set %d is bound per cell: a level surface needs a value per "
                           "node",
                           setIndex);
        return nullptr;
    }
    return isValuesSetComplete(*mesh, setIndex) ? mesh->getValuesSet(setIndex) : nullptr;
}

float PoMeshLevelSurf::getIsosurfValue(void) {
    return levelValue.getValue();
}

int PoMeshLevelSurf::getSurfOrientation(void) {
    return surfOrientation.getValue();
}

unsigned int PoMeshLevelSurf::getIsosurfDataSetId(void) {
    const PbMesh3D* mesh = getCurrentMesh3D();
    return mesh ? mesh->getFltDataSetId(getIsosurfDataSetIndex()) : 0;
}

int PoMeshLevelSurf::getIsosurfDataSetIndex(void) {
    int level = valuesIndexForLevel.getValue();
    return level == -1 ? valuesIndex.getValue() : level;
}
