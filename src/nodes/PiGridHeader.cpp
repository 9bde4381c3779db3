#include "nodes/PiGridHeader.h"

#include "nodes/PiMeshSink.h"
#include "nodes/PiMeshSource.h"

#include <Quillon/3Ddata/PbGrid2D.h>
#include <Quillon/3Ddata/PbGrid3D.h>

namespace {
// Number of values of each axis array.
void arraySizes(const PiGridHeader::Layout& layout, const int* sizes, int numAxes, int* counts) {
    int numNodes = 1;
    for (int axis = 0; axis < numAxes; ++axis)
        numNodes *= sizes[axis];
    for (int axis = 0; axis < numAxes; ++axis)
        counts[axis] = layout.perNode ? numNodes : sizes[axis];
}

// The sizes line and the array of each axis.
bool readAxes(PiMeshSource& source, const PiGridHeader::Layout& layout, int numAxes, int* sizes,
              std::vector<float>* arrays) {
    if (!source.readSizes(layout.sizes, sizes, numAxes))
        return false;
    int counts[3];
    arraySizes(layout, sizes, numAxes, counts);
    for (int axis = 0; axis < numAxes; ++axis)
        if (!source.readFloatArray(layout.arrays[axis], counts[axis], arrays[axis]))
            return false;
    return true;
}
} // namespace

void PiGridHeader::write2D(PiMeshSink& sink, const Layout& layout, int numX, int numY,
                           const float* x, const float* y, const float* z) {
    const int sizes[2] = {numX, numY};
    int counts[2];
    arraySizes(layout, sizes, 2, counts);
    sink.intLine({numX, numY}, layout.sizes);
    sink.floatArray(layout.arrays[0], x, counts[0]);
    sink.floatArray(layout.arrays[1], y, counts[1]);
    sink.zBlock(layout.arrays[2], z, numX * numY);
}

bool PiGridHeader::read2D(PiMeshSource& source, const Layout& layout, PbGrid2D& grid) {
    int sizes[2];
    std::vector<float> arrays[3];
    bool hasZ = false;
    if (!readAxes(source, layout, 2, sizes, arrays) ||
        !source.readZBlock(layout.arrays[2], sizes[0] * sizes[1], arrays[2], hasZ))
        return false;
    if (hasZ)
        grid.setGeometry(sizes[0], sizes[1], arrays[0].data(), arrays[1].data(), arrays[2].data());
    else
        grid.setGeometry(sizes[0], sizes[1], arrays[0].data(), arrays[1].data());
    return true;
}

void PiGridHeader::write3D(PiMeshSink& sink, const Layout& layout, const PbGrid3D& grid) {
    int sizes[3];
    const float* arrays[3];
    grid.getGeometry(sizes[0], sizes[1], sizes[2], arrays[0], arrays[1], arrays[2]);
    int counts[3];
    arraySizes(layout, sizes, 3, counts);
    sink.intLine({sizes[0], sizes[1], sizes[2]}, layout.sizes);
    for (int axis = 0; axis < 3; ++axis)
        sink.floatArray(layout.arrays[axis], arrays[axis], counts[axis]);
}

bool PiGridHeader::read3D(PiMeshSource& source, const Layout& layout, PbGrid3D& grid) {
    int sizes[3];
    std::vector<float> arrays[3];
    if (!readAxes(source, layout, 3, sizes, arrays))
        return false;
    grid.setGeometry(sizes[0], sizes[1], sizes[2], arrays[0].data(), arrays[1].data(),
                     arrays[2].data());
    return true;
}
