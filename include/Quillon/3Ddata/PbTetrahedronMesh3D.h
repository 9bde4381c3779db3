#pragma once
#include <Quillon/3Ddata/PbUnstructuredMesh3D.h>
#include <Quillon/QuillonApi.h>

// Volume mesh of tetrahedra: cellIndices holds 4 node indices per cell.
class QUILLON_API PbTetrahedronMesh3D : public PbUnstructuredMesh3D {
public:
    explicit PbTetrahedronMesh3D(int isDataDuplicate = 1);
    PbTetrahedronMesh3D(int numNodes, const float* x, const float* y, const float* z, int numCells,
                        const int* cellIndices, int isDataDuplicate = 1);

    void setGeometry(int numNodes, const float* x, const float* y, const float* z, int numCells,
                     const int* cellIndices);
    void print(FILE* fp) const override;
};
