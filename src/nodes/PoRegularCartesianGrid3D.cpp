#include <Quillon/nodes/PoRegularCartesianGrid3D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoRegularCartesianGrid3D, PoSFRegularCartesianGrid3D,
                        PbRegularCartesianGrid3D)
