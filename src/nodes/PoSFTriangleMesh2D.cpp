#include <Quillon/nodes/PoSFTriangleMesh2D.h>

#include "nodes/PiCellMeshHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFTriangleMesh2D, PbTriangleMesh2D)

void PoSFTriangleMesh2D::writeHeaderOf(PiMeshSink& sink, const PbTriangleMesh2D& mesh) const {
    PiCellMeshHeader::writeSurface(sink, mesh);
}

bool PoSFTriangleMesh2D::readHeaderOf(PiMeshSource& source, PbTriangleMesh2D& mesh) const {
    return PiCellMeshHeader::readSurface(source, mesh);
}
