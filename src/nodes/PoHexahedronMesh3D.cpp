#include <Quillon/nodes/PoHexahedronMesh3D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoHexahedronMesh3D, PoSFHexahedronMesh3D, PbHexahedronMesh3D)
