#include <Quillon/nodes/PoSFIndexedMesh2D.h>

#include "nodes/PiCellMeshHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFIndexedMesh2D, PbIndexedMesh2D)

void PoSFIndexedMesh2D::writeHeaderOf(PiMeshSink& sink, const PbIndexedMesh2D& mesh) const {
    PiCellMeshHeader::writeSurface(sink, mesh);
}

bool PoSFIndexedMesh2D::readHeaderOf(PiMeshSource& source, PbIndexedMesh2D& mesh) const {
    return PiCellMeshHeader::readSurface(source, mesh);
}
