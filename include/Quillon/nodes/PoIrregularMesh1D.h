#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFIrregularMesh1D.h>

// Property node holding a line mesh of nodes at given x values in its field "mesh"; traversed, it
// makes the mesh the current one for the representations below.
class QUILLON_API PoIrregularMesh1D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoIrregularMesh1D, PoSFIrregularMesh1D, PbIrregularMesh1D)
};
