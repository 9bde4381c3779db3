#include <Quillon/nodes/PoSFCartesianGrid3D.h>

#include "nodes/PiGridHeader.h"
#include "nodes/PiMeshGeometry.h"

PO_SFMESH_SOURCE(PoSFCartesianGrid3D, PbCartesianGrid3D)

namespace {
const PiGridHeader::Layout kLayout = {"   # num_x, num_y, num_z",
                                      {"# x coordinates of mesh nodes",
                                       "# y coordinates of mesh nodes",
                                       "# z coordinates of mesh nodes"},
                                      true};
} // namespace

void PoSFCartesianGrid3D::writeHeaderOf(PiMeshSink& sink, const PbCartesianGrid3D& mesh) const {
    PiGridHeader::write3D(sink, kLayout, mesh);
}

bool PoSFCartesianGrid3D::readHeaderOf(PiMeshSource& source, PbCartesianGrid3D& mesh) const {
    return PiGridHeader::read3D(source, kLayout, mesh);
}
