#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFParalCartesianGrid3D.h>

// Property node holding a rectilinear volume grid in its field "mesh"; traversed, it makes the mesh
// the current one for the representations below.
class QUILLON_API PoParalCartesianGrid3D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoParalCartesianGrid3D, PoSFParalCartesianGrid3D,
                            PbParalCartesianGrid3D)
};
