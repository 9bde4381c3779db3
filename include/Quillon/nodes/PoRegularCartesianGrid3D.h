#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFRegularCartesianGrid3D.h>

// Property node holding a regular volume grid in its field "mesh"; traversed, it makes the mesh the
// current one for the representations below.
class QUILLON_API PoRegularCartesianGrid3D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoRegularCartesianGrid3D, PoSFRegularCartesianGrid3D,
                            PbRegularCartesianGrid3D)
};
