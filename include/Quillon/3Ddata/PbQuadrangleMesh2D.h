#pragma once
#include <Quillon/3Ddata/PbFixedCellMesh2D.h>
#include <Quillon/QuillonApi.h>

// Unstructured surface mesh of quadrangles, given by 4 node indices per
// cell.
class QUILLON_API PbQuadrangleMesh2D : public PbFixedCellMesh2D {
public:
    explicit PbQuadrangleMesh2D(int isDataDuplicate = 1);

    void meshFilled(PoMeshFilled* kit) const override;
};
