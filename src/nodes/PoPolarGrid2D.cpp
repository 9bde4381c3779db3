#include <Quillon/nodes/PoPolarGrid2D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoPolarGrid2D, PoSFPolarGrid2D, PbPolarGrid2D)
