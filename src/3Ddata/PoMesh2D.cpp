#include <Quillon/3Ddata/PoMesh2D.h>

#include <Quillon/3Ddata/PbMesh2D.h>
#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/nodes/SoCoordinate3.h>

PO_KIT_ABSTRACT_SOURCE(PoMesh2D, PoMesh)

PoMesh2D::PoMesh2D() {
    SO_KIT_CONSTRUCTOR(PoMesh2D);
    SO_KIT_ADD_FIELD(zValuesIndex, (-1));
    SO_KIT_INIT_INSTANCE();
    watchFields({&zValuesIndex});
}

PoMesh2D::~PoMesh2D() = default;

void PoMesh2D::setMesh(PbMesh2D* mesh) {
    setMeshObject(mesh);
}

const PbMesh2D* PoMesh2D::getMesh(void) {
    return static_cast<const PbMesh2D*>(PoMesh::getMesh());
}

const PbMesh* PoMesh2D::readStateMesh(void) {
    return readElement<PoMeshElement>(&PoMeshElement::getMesh2D);
}

void PoMesh2D::preRebuild(void) {
    PoMesh::preRebuild();
    m_currentMesh2D = static_cast<const PbMesh2D*>(getCurrentMesh());
}

SoCoordinate3* PoMesh2D::makeSoCoordinate3(int zValuesSetIndex) {
    if (!m_currentMesh2D)
        return nullptr;
    auto* coordinates = new SoCoordinate3;
    const float* z =
        zValuesSetIndex >= 0 ? m_currentMesh2D->getValuesSet(zValuesSetIndex) : nullptr;
    m_currentMesh2D->getNodesCoord(z, coordinates->point);
    setTekCoordinates(coordinates);
    return coordinates;
}
