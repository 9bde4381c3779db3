#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFHexahedronMesh3D.h>

// Property node holding an unstructured volume mesh of hexahedra in its field "mesh"; traversed, it
// makes the mesh the current one for the representations below.
class QUILLON_API PoHexahedronMesh3D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoHexahedronMesh3D, PoSFHexahedronMesh3D, PbHexahedronMesh3D)
};
