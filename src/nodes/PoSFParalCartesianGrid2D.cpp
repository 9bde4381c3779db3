#include <Quillon/nodes/PoSFParalCartesianGrid2D.h>

#include "nodes/PiGridHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFParalCartesianGrid2D, PbParalCartesianGrid2D)

namespace {
const PiGridHeader::Layout kLayout = {
    "   # num_x, num_y",
    {"# x coordinates of mesh", "# y coordinates of mesh", "# z coordinates of mesh"},
    false};
} // namespace

void PoSFParalCartesianGrid2D::writeHeaderOf(PiMeshSink& sink,
                                             const PbParalCartesianGrid2D& mesh) const {
    PiGridHeader::write2D(sink, kLayout, mesh);
}

bool PoSFParalCartesianGrid2D::readHeaderOf(PiMeshSource& source,
                                            PbParalCartesianGrid2D& mesh) const {
    return PiGridHeader::read2D(source, kLayout, mesh);
}
