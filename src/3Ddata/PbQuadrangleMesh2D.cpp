#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int isDataDuplicate)
    : PbFixedCellMesh2D(isDataDuplicate, 4, "PbQuadrangleMesh2D") {}
