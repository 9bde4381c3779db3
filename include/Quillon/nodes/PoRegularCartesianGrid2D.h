#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFRegularCartesianGrid2D.h>

// Property node holding a regular surface grid in its field "mesh"; traversed, it makes the mesh
// the current one for the representations below.
class QUILLON_API PoRegularCartesianGrid2D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoRegularCartesianGrid2D, PoSFRegularCartesianGrid2D,
                            PbRegularCartesianGrid2D)
};
