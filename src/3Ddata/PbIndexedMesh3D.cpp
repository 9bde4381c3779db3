#include <Quillon/3Ddata/PbIndexedMesh3D.h>

PbIndexedMesh3D::PbIndexedMesh3D(int isDataDuplicate) : PbUnstructuredMesh3D(isDataDuplicate) {}

PbIndexedMesh3D::PbIndexedMesh3D(int numNodes, const float* x, const float* y, const float* z,
                                 int numCells, const int* cellTypes, const int* cellIndices,
                                 int isDataDuplicate)
    : PbUnstructuredMesh3D(isDataDuplicate) {
    setGeometry(numNodes, x, y, z, numCells, cellTypes, cellIndices);
}

void PbIndexedMesh3D::setGeometry(int numNodes, const float* x, const float* y, const float* z,
                                  int numCells, const int* cellTypes, const int* cellIndices) {
    changeGeometry("PbIndexedMesh3D::setGeometry", numNodes, x, y, z, numCells, cellTypes, 0,
                   cellIndices);
}

void PbIndexedMesh3D::print(FILE* fp) const {
    PbUnstructuredMesh3D::print(fp);
    fprintf(fp, "PbIndexedMesh3D:: allocElem = %d\n", getAllocatedCellSizes());
    fprintf(fp, "PbIndexedMesh3D:: elemIndexSize = %d\n", getNumCellIndices());
    fprintf(fp, "PbIndexedMesh3D:: allocElemIndex = %d\n", getAllocatedCellIndices());
}
