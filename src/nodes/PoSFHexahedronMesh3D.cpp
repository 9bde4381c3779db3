#include <Quillon/nodes/PoSFHexahedronMesh3D.h>

#include "nodes/PiCellMeshHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFHexahedronMesh3D, PbHexahedronMesh3D)

void PoSFHexahedronMesh3D::writeHeaderOf(PiMeshSink& sink, const PbHexahedronMesh3D& mesh) const {
    PiCellMeshHeader::writeVolume(sink, mesh, 8);
}

bool PoSFHexahedronMesh3D::readHeaderOf(PiMeshSource& source, PbHexahedronMesh3D& mesh) const {
    return PiCellMeshHeader::readVolume(source, mesh, 8);
}
