#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFPolarGrid2D.h>

// Property node holding a polar surface grid in its field "mesh"; traversed, it makes the mesh the
// current one for the representations below.
class QUILLON_API PoPolarGrid2D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoPolarGrid2D, PoSFPolarGrid2D, PbPolarGrid2D)
};
