#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFTetrahedronMesh3D.h>

// Property node holding an unstructured volume mesh of tetrahedra in its field "mesh"; traversed,
// it makes the mesh the current one for the representations below.
class QUILLON_API PoTetrahedronMesh3D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoTetrahedronMesh3D, PoSFTetrahedronMesh3D, PbTetrahedronMesh3D)
};
