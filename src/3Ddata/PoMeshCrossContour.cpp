#include <Quillon/3Ddata/PoMeshCrossContour.h>

#include <Quillon/3Ddata/PbMesh3D.h>

#include <Inventor/SbPlane.h>

PO_KIT_SOURCE(PoMeshCrossContour, PoMesh3D)

PoMeshCrossContour::PoMeshCrossContour() {
    SO_KIT_CONSTRUCTOR(PoMeshCrossContour);
    SO_KIT_ADD_FIELD(plane, (SbPlane(SbVec3f(0.0f, 0.0f, 1.0f), 0.0f)));
    SO_KIT_ADD_CATALOG_ENTRY(groupCrossContour, SoGroup, TRUE, alternateRep, \x0, TRUE);
    SO_KIT_INIT_INSTANCE();
    watchFields({&plane});
}

PoMeshCrossContour::~PoMeshCrossContour() = default;

void PoMeshCrossContour::rebuild(void) {
    RebuildScope scope(this);
    const PbMesh3D* mesh =
        startRepresentation("groupCrossContour", &plane.getValue(), "PoMeshCrossContour::rebuild");
    if (!mesh)
        return;
    makeCrossContour(mesh, plane.getValue());
    finishRepresentation("groupCrossContour");
}

void PoMeshCrossContour::setDefaultOnNonWritingFields(void) {
    PoMesh3D::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() == FOLD_NODE_WRITE_FORMAT)
        groupCrossContour.setDefault(TRUE);
}
