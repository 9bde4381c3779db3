#include <Quillon/3Ddata/PbHexahedronMesh3D.h>

PbHexahedronMesh3D::PbHexahedronMesh3D(int isDataDuplicate)
    : PbUnstructuredMesh3D(isDataDuplicate) {}

PbHexahedronMesh3D::PbHexahedronMesh3D(int numNodes, const float* x, const float* y, const float* z,
                                       int numCells, const int* cellIndices, int isDataDuplicate)
    : PbUnstructuredMesh3D(isDataDuplicate) {
    setGeometry(numNodes, x, y, z, numCells, cellIndices);
}

void PbHexahedronMesh3D::setGeometry(int numNodes, const float* x, const float* y, const float* z,
                                     int numCells, const int* cellIndices) {
    changeGeometry("PbHexahedronMesh3D::setGeometry", numNodes, x, y, z, numCells, nullptr, 8,
                   cellIndices);
}

void PbHexahedronMesh3D::print(FILE* fp) const {
    PbUnstructuredMesh3D::print(fp);
    printCellIndices(fp, "PbHexahedronMesh3D");
}
