#include <Quillon/nodes/PoSFRegularCartesianGrid2D.h>

#include "nodes/PiMeshGeometry.h"
#include "nodes/PiMeshSink.h"
#include "nodes/PiMeshSource.h"

PO_SFMESH_SOURCE(PoSFRegularCartesianGrid2D, PbRegularCartesianGrid2D)

namespace {
const char* const kSizes = "   # num_x, num_y";
const char* const kMin = "   # x_min, y_min";
const char* const kMax = "   # x_max, y_max";
const char* const kZ = "# z coordinates of mesh";
} // namespace

void PoSFRegularCartesianGrid2D::writeHeaderOf(PiMeshSink& sink,
                                               const PbRegularCartesianGrid2D& mesh) const {
    int numX, numY;
    float xmin, ymin, xmax, ymax;
    const float* z;
    mesh.getGeometry(numX, numY, xmin, ymin, xmax, ymax, z);
    sink.intLine({numX, numY}, kSizes);
    sink.floatLine({xmin, ymin}, kMin);
    sink.floatLine({xmax, ymax}, kMax);
    sink.zBlock(kZ, z, numX * numY);
}

bool PoSFRegularCartesianGrid2D::readHeaderOf(PiMeshSource& source,
                                              PbRegularCartesianGrid2D& mesh) const {
    int sizes[2];
    float min[2], max[2];
    std::vector<float> z;
    bool hasZ = false;
    if (!source.readSizes(kSizes, sizes, 2) || !source.readFloatLine(kMin, min, 2) ||
        !source.readFloatLine(kMax, max, 2) || !source.readZBlock(kZ, sizes[0] * sizes[1], z, hasZ))
        return false;
    if (hasZ)
        mesh.setGeometry(sizes[0], sizes[1], min[0], min[1], max[0], max[1], z.data());
    else
        mesh.setGeometry(sizes[0], sizes[1], min[0], min[1], max[0], max[1]);
    return true;
}
