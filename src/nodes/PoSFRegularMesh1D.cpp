#include <Quillon/nodes/PoSFRegularMesh1D.h>

#include "nodes/PiMeshGeometry.h"
#include "nodes/PiMeshSink.h"
#include "nodes/PiMeshSource.h"

PO_SFMESH_SOURCE(PoSFRegularMesh1D, PbRegularMesh1D)

namespace {
const char* const kSize = "   # size";
const char* const kExtent = "# xmin and xmax coordinates of mesh nodes";
} // namespace

void PoSFRegularMesh1D::writeHeaderOf(PiMeshSink& sink, const PbRegularMesh1D& mesh) const {
    int size;
    float xmin, xmax;
    mesh.getGeometry(size, xmin, xmax);
    sink.intLine({size}, kSize);
    sink.floatList(kExtent, {xmin, xmax});
}

bool PoSFRegularMesh1D::readHeaderOf(PiMeshSource& source, PbRegularMesh1D& mesh) const {
    int size;
    std::vector<float> extent;
    if (!source.readSizes(kSize, &size, 1) || !source.readFloatArray(kExtent, 2, extent))
        return false;
    mesh.setGeometry(size, extent[0], extent[1]);
    return true;
}
