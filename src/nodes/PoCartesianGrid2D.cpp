#include <Quillon/nodes/PoCartesianGrid2D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoCartesianGrid2D, PoSFCartesianGrid2D, PbCartesianGrid2D)
