#include <Quillon/nodes/PoSFCartesianGrid2D.h>

#include "nodes/PiGridHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFCartesianGrid2D, PbCartesianGrid2D)

namespace {
const PiGridHeader::Layout kLayout = {"   # num_x, num_y",
                                      {"# x coordinates of mesh nodes",
                                       "# y coordinates of mesh nodes",
                                       "# z coordinates of mesh nodes"},
                                      true};
} // namespace

void PoSFCartesianGrid2D::writeHeaderOf(PiMeshSink& sink, const PbCartesianGrid2D& mesh) const {
    PiGridHeader::write2D(sink, kLayout, mesh);
}

bool PoSFCartesianGrid2D::readHeaderOf(PiMeshSource& source, PbCartesianGrid2D& mesh) const {
    return PiGridHeader::read2D(source, kLayout, mesh);
}
