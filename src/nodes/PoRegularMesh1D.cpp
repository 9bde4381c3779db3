#include <Quillon/nodes/PoRegularMesh1D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoRegularMesh1D, PoSFRegularMesh1D, PbRegularMesh1D)
