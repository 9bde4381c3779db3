#include <Quillon/nodes/PoSFIndexedMesh3D.h>

#include "nodes/PiCellMeshHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFIndexedMesh3D, PbIndexedMesh3D)

void PoSFIndexedMesh3D::writeHeaderOf(PiMeshSink& sink, const PbIndexedMesh3D& mesh) const {
    PiCellMeshHeader::writeVolume(sink, mesh);
}

bool PoSFIndexedMesh3D::readHeaderOf(PiMeshSource& source, PbIndexedMesh3D& mesh) const {
    return PiCellMeshHeader::readVolume(source, mesh);
}
