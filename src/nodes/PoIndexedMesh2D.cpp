#include <Quillon/nodes/PoIndexedMesh2D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoIndexedMesh2D, PoSFIndexedMesh2D, PbIndexedMesh2D)
