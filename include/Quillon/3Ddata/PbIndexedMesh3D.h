#pragma once
#include <Quillon/3Ddata/PbUnstructuredMesh3D.h>
#include <Quillon/QuillonApi.h>

// Volume mesh of tetrahedra, pyramids, wedges and hexahedra.  The type of a
// cell is its number of nodes (4, 5, 6 or 8); cellIndices concatenates the
// node indices of cell 0, cell 1, ... .
class QUILLON_API PbIndexedMesh3D : public PbUnstructuredMesh3D {
public:
    explicit PbIndexedMesh3D(int isDataDuplicate = 1);
    PbIndexedMesh3D(int numNodes, const float* x, const float* y, const float* z, int numCells,
                    const int* cellTypes, const int* cellIndices, int isDataDuplicate = 1);

    void setGeometry(int numNodes, const float* x, const float* y, const float* z, int numCells,
                     const int* cellTypes, const int* cellIndices);
    // Each cell's number of nodes.
    const int* getCellTypes() const { return getCellSizes(); }
    int getCellIndicesSize() const { return getNumCellIndices(); }
    void print(FILE* fp) const override;
};
