#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFTriangleMesh2D.h>

// Property node holding an unstructured surface mesh of triangles in its field "mesh"; traversed,
// it makes the mesh the current one for the representations below.
class QUILLON_API PoTriangleMesh2D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoTriangleMesh2D, PoSFTriangleMesh2D, PbTriangleMesh2D)
};
