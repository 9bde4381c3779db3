#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFIndexedMesh2D.h>

// Property node holding an unstructured surface mesh of triangles and quadrangles in its field
// "mesh"; traversed, it makes the mesh the current one for the representations below.
class QUILLON_API PoIndexedMesh2D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoIndexedMesh2D, PoSFIndexedMesh2D, PbIndexedMesh2D)
};
