#include <Quillon/nodes/PoSFPolarGrid2D.h>

#include "nodes/PiGridHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFPolarGrid2D, PbPolarGrid2D)

namespace {
const PiGridHeader::Layout kLayout = {"   # num_r, num_t",
                                      {"# r coordinates of mesh nodes",
                                       "# t coordinates of mesh nodes",
                                       "# z coordinates of mesh nodes"},
                                      false};
} // namespace

void PoSFPolarGrid2D::writeHeaderOf(PiMeshSink& sink, const PbPolarGrid2D& mesh) const {
    PiGridHeader::write2D(sink, kLayout, mesh);
}

bool PoSFPolarGrid2D::readHeaderOf(PiMeshSource& source, PbPolarGrid2D& mesh) const {
    return PiGridHeader::read2D(source, kLayout, mesh);
}
