#include <Quillon/nodes/PoSFTetrahedronMesh3D.h>

#include "nodes/PiCellMeshHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFTetrahedronMesh3D, PbTetrahedronMesh3D)

void PoSFTetrahedronMesh3D::writeHeaderOf(PiMeshSink& sink, const PbTetrahedronMesh3D& mesh) const {
    PiCellMeshHeader::writeVolume(sink, mesh, 4);
}

bool PoSFTetrahedronMesh3D::readHeaderOf(PiMeshSource& source, PbTetrahedronMesh3D& mesh) const {
    return PiCellMeshHeader::readVolume(source, mesh, 4);
}
