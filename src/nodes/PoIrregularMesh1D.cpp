#include <Quillon/nodes/PoIrregularMesh1D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoIrregularMesh1D, PoSFIrregularMesh1D, PbIrregularMesh1D)
