#include "nodes/PiMeshSink.h"

void PiMeshSink::zBlock(const char* comment, const float* z, int numNodes) {
    intLine({z ? 1 : 0}, z ? "   # 3D mesh" : "   # 2D mesh");
    if (z)
        floatArray(comment, z, numNodes);
}
