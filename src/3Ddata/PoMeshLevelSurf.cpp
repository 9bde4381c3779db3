#include <Quillon/3Ddata/PoMeshLevelSurf.h>

#include <Quillon/3Ddata/PbMesh3D.h>

#include <Inventor/nodes/SoGroup.h>

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
    const PbMesh3D* mesh = startRepresentation("groupLevelSurf");
    if (!mesh)
        return;
    insertDefaultShapeHints();
    meshLevelSurf(mesh);
    finishRepresentation("groupLevelSurf");
}

void PoMeshLevelSurf::setDefaultOnNonWritingFields(void) {
    PoMesh3D::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() == FOLD_NODE_WRITE_FORMAT)
        groupLevelSurf.setDefault(TRUE);
}

const float* PoMeshLevelSurf::getIsosurfDataSet(void) {
    return boundValuesSet(getIsosurfDataSetIndex(), PbMesh::PER_NODE, "PoMeshLevelSurf::rebuild",
                          "a level surface needs a value per node");
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
