#include <Quillon/nodes/PoParalCartesianGrid2D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoParalCartesianGrid2D, PoSFParalCartesianGrid2D, PbParalCartesianGrid2D)
