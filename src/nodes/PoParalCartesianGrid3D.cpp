#include <Quillon/nodes/PoParalCartesianGrid3D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoParalCartesianGrid3D, PoSFParalCartesianGrid3D, PbParalCartesianGrid3D)
