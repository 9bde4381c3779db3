#include <Quillon/3Ddata/PoMeshCrossContour.h>

#include <Quillon/3Ddata/PbMesh3D.h>
#include <Quillon/graph/PoDebugError.h>

#include <Inventor/SbPlane.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoMaterial.h>

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
    const PbMesh3D* mesh = getCurrentMesh3D();
    bool drawable = mesh && !mesh->isEmpty() && hasPlaneNormal(plane.getValue());
    if (mesh && !mesh->isEmpty() && !drawable)
        PoDebugError::post("PoMeshCrossContour::rebuild", "the plane has no normal");
    if (!drawable) {
        setPart("appearance.material", nullptr);
        setPart("groupCrossContour", nullptr);
        setGroup(nullptr);
        clearTekNodes();
        return;
    }
    auto* group = new SoGroup;
    setGroup(group);
    clearTekNodes();
    makeCrossContour(mesh, plane.getValue());
    setPart("appearance.material", getMaterial());
    setPart("groupCrossContour", group);
}

void PoMeshCrossContour::setDefaultOnNonWritingFields(void) {
    PoMesh3D::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() == FOLD_NODE_WRITE_FORMAT)
        groupCrossContour.setDefault(TRUE);
}
