#include <Quillon/nodes/PoCartesianGrid3D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoCartesianGrid3D, PoSFCartesianGrid3D, PbCartesianGrid3D)
