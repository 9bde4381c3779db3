#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/3Ddata/PoMeshFilled.h>

PbQuadrangleMesh2D::PbQuadrangleMesh2D(int isDataDuplicate)
    : PbFixedCellMesh2D(isDataDuplicate, 4, "PbQuadrangleMesh2D") {}

void PbQuadrangleMesh2D::meshFilled(PoMeshFilled* kit) const {
    if (kit)
        kit->quadrangleMeshFilled(this);
}
