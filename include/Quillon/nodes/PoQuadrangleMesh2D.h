#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFQuadrangleMesh2D.h>

// Property node holding an unstructured surface mesh of quadrangles in its field "mesh"; traversed,
// it makes the mesh the current one for the representations below.
class QUILLON_API PoQuadrangleMesh2D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoQuadrangleMesh2D, PoSFQuadrangleMesh2D, PbQuadrangleMesh2D)
};
