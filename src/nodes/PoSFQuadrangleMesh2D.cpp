#include <Quillon/nodes/PoSFQuadrangleMesh2D.h>

#include "nodes/PiCellMeshHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFQuadrangleMesh2D, PbQuadrangleMesh2D)

void PoSFQuadrangleMesh2D::writeHeaderOf(PiMeshSink& sink, const PbQuadrangleMesh2D& mesh) const {
    PiCellMeshHeader::writeSurface(sink, mesh);
}

bool PoSFQuadrangleMesh2D::readHeaderOf(PiMeshSource& source, PbQuadrangleMesh2D& mesh) const {
    return PiCellMeshHeader::readSurface(source, mesh);
}
