#pragma once
#include <Quillon/3Ddata/PbFixedCellMesh2D.h>

// Unstructured surface mesh of quadrangles, given by 4 node indices per
// cell.
class PbQuadrangleMesh2D : public PbFixedCellMesh2D {
public:
    explicit PbQuadrangleMesh2D(int isDataDuplicate = 1);
};
