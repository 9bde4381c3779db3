#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>

PbTetrahedronMesh3D::PbTetrahedronMesh3D(int isDataDuplicate)
    : PbUnstructuredMesh3D(isDataDuplicate) {}

PbTetrahedronMesh3D::PbTetrahedronMesh3D(int numNodes, const float* x, const float* y,
                                         const float* z, int numCells, const int* cellIndices,
                                         int isDataDuplicate)
    : PbUnstructuredMesh3D(isDataDuplicate) {
    setGeometry(numNodes, x, y, z, numCells, cellIndices);
}

void PbTetrahedronMesh3D::setGeometry(int numNodes, const float* x, const float* y, const float* z,
                                      int numCells, const int* cellIndices) {
    changeGeometry("PbTetrahedronMesh3D::setGeometry", numNodes, x, y, z, numCells, nullptr, 4,
                   cellIndices);
}

void PbTetrahedronMesh3D::print(FILE* fp) const {
    PbUnstructuredMesh3D::print(fp);
    printCellIndices(fp, "PbTetrahedronMesh3D");
}
