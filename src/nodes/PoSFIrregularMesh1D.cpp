#include <Quillon/nodes/PoSFIrregularMesh1D.h>

#include "nodes/PiMeshGeometry.h"
#include "nodes/PiMeshSink.h"
#include "nodes/PiMeshSource.h"

PO_SFMESH_SOURCE(PoSFIrregularMesh1D, PbIrregularMesh1D)

namespace {
const char* const kSize = "   # size";
const char* const kX = "# x coordinates of mesh nodes";
} // namespace

void PoSFIrregularMesh1D::writeHeaderOf(PiMeshSink& sink, const PbIrregularMesh1D& mesh) const {
    int size;
    const float* x;
    mesh.getGeometry(size, x);
    sink.intLine({size}, kSize);
    sink.floatArray(kX, x, size);
}

bool PoSFIrregularMesh1D::readHeaderOf(PiMeshSource& source, PbIrregularMesh1D& mesh) const {
    int size;
    std::vector<float> x;
    if (!source.readSizes(kSize, &size, 1) || !source.readFloatArray(kX, size, x))
        return false;
    mesh.setGeometry(size, x.data());
    return true;
}
