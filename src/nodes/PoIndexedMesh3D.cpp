#include <Quillon/nodes/PoIndexedMesh3D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoIndexedMesh3D, PoSFIndexedMesh3D, PbIndexedMesh3D)
