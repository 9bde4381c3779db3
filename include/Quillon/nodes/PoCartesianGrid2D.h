#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoMeshProperty.h>
#include <Quillon/nodes/PoSFCartesianGrid2D.h>

// Property node holding a curvilinear surface grid in its field "mesh"; traversed, it makes the
// mesh the current one for the representations below.
class QUILLON_API PoCartesianGrid2D : public PoMeshProperty {
    PO_MESH_PROPERTY_HEADER(PoCartesianGrid2D, PoSFCartesianGrid2D, PbCartesianGrid2D)
};
