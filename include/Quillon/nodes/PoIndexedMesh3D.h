#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFIndexedMesh3D.h>

// Property node holding an unstructured volume mesh of tetrahedra, pyramids, wedges and hexahedra
// in its field "mesh"; traversed, it makes the mesh the current one for the representations below.
class QUILLON_API PoIndexedMesh3D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoIndexedMesh3D, PoSFIndexedMesh3D, PbIndexedMesh3D)
};
