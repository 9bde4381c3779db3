#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFRegularMesh1D.h>

// Property node holding a line mesh of evenly spaced nodes in its field "mesh"; traversed, it makes
// the mesh the current one for the representations below.
class QUILLON_API PoRegularMesh1D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoRegularMesh1D, PoSFRegularMesh1D, PbRegularMesh1D)
};
