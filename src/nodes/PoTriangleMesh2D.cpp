#include <Quillon/nodes/PoTriangleMesh2D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoTriangleMesh2D, PoSFTriangleMesh2D, PbTriangleMesh2D)
