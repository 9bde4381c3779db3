#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFParalCartesianGrid2D.h>

// Property node holding a rectilinear surface grid in its field "mesh"; traversed, it makes the
// mesh the current one for the representations below.
class QUILLON_API PoParalCartesianGrid2D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoParalCartesianGrid2D, PoSFParalCartesianGrid2D,
                            PbParalCartesianGrid2D)
};
