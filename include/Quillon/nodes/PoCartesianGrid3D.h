#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFCartesianGrid3D.h>

// Property node holding a curvilinear volume grid in its field "mesh"; traversed, it makes the mesh
// the current one for the representations below.
class QUILLON_API PoCartesianGrid3D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoCartesianGrid3D, PoSFCartesianGrid3D, PbCartesianGrid3D)
};
