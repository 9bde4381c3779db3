#include <Quillon/nodes/PoQuadrangleMesh2D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoQuadrangleMesh2D, PoSFQuadrangleMesh2D, PbQuadrangleMesh2D)
