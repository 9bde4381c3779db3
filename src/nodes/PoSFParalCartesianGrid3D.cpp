#include <Quillon/nodes/PoSFParalCartesianGrid3D.h>

#include "nodes/PiGridHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFParalCartesianGrid3D, PbParalCartesianGrid3D)

namespace {
const PiGridHeader::Layout kLayout = {
    "   # num_x, num_y, num_z",
    {"# x coordinates of mesh", "# y coordinates of mesh", "# z coordinates of mesh"},
    false};
} // namespace

void PoSFParalCartesianGrid3D::writeHeaderOf(PiMeshSink& sink,
                                             const PbParalCartesianGrid3D& mesh) const {
    PiGridHeader::write3D(sink, kLayout, mesh);
}

bool PoSFParalCartesianGrid3D::readHeaderOf(PiMeshSource& source,
                                            PbParalCartesianGrid3D& mesh) const {
    return PiGridHeader::read3D(source, kLayout, mesh);
}
