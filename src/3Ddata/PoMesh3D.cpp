#include <Quillon/3Ddata/PoMesh3D.h>

#include <Quillon/3Ddata/PbMesh3D.h>
#include <Quillon/nodes/PoMeshElement.h>

PO_KIT_ABSTRACT_SOURCE(PoMesh3D, PoMesh)

PoMesh3D::PoMesh3D() {
    SO_KIT_CONSTRUCTOR(PoMesh3D);
    SO_KIT_INIT_INSTANCE();
}

PoMesh3D::~PoMesh3D() = default;

void PoMesh3D::setMesh(PbMesh3D* mesh) {
    setMeshObject(mesh);
}

const PbMesh3D* PoMesh3D::getMesh(void) {
    return static_cast<const PbMesh3D*>(PoMesh::getMesh());
}

const PbMesh* PoMesh3D::readStateMesh(void) {
    return readElement<PoMeshElement>(&PoMeshElement::getMesh3D);
}

void PoMesh3D::preRebuild(void) {
    PoMesh::preRebuild();
    m_currentMesh3D = static_cast<const PbMesh3D*>(getCurrentMesh());
}
