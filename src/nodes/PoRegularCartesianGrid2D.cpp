#include <Quillon/nodes/PoRegularCartesianGrid2D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoRegularCartesianGrid2D, PoSFRegularCartesianGrid2D,
                        PbRegularCartesianGrid2D)
