#include <Quillon/nodes/PoTetrahedronMesh3D.h>

#include <Quillon/nodes/PoMeshElement.h>

#include <Inventor/actions/SoAction.h>

PO_MESH_PROPERTY_SOURCE(PoTetrahedronMesh3D, PoSFTetrahedronMesh3D, PbTetrahedronMesh3D)
