#include <Quillon/nodes/PoSFRegularCartesianGrid3D.h>

#include "nodes/PiMeshGeometry.h"
#include "nodes/PiMeshSink.h"
#include "nodes/PiMeshSource.h"

PO_SFMESH_SOURCE(PoSFRegularCartesianGrid3D, PbRegularCartesianGrid3D)

namespace {
const char* const kSizes = "   # num_x, num_y, num_z";
const char* const kMin = "   # x_min, y_min, z_min";
const char* const kMax = "   # x_max, y_max, z_max";
} // namespace

void PoSFRegularCartesianGrid3D::writeHeaderOf(PiMeshSink& sink,
                                               const PbRegularCartesianGrid3D& mesh) const {
    int numX, numY, numZ;
    float xmin, ymin, zmin, xmax, ymax, zmax;
    mesh.getDim(numX, numY, numZ);
    mesh.getMinMax(xmin, ymin, zmin, xmax, ymax, zmax);
    sink.intLine({numX, numY, numZ}, kSizes);
    sink.floatLine({xmin, ymin, zmin}, kMin);
    sink.floatLine({xmax, ymax, zmax}, kMax);
}

bool PoSFRegularCartesianGrid3D::readHeaderOf(PiMeshSource& source,
                                              PbRegularCartesianGrid3D& mesh) const {
    int sizes[3];
    float min[3], max[3];
    if (!source.readSizes(kSizes, sizes, 3) || !source.readFloatLine(kMin, min, 3) ||
        !source.readFloatLine(kMax, max, 3))
        return false;
    mesh.setGeometry(sizes[0], sizes[1], sizes[2], min[0], min[1], min[2], max[0], max[1], max[2]);
    return true;
}
