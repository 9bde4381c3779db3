#pragma once
#include <Quillon/3Ddata/PbTetrahedronMesh3D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding an unstructured volume mesh of tetrahedra.  Its header in
// scene files: the number of nodes, their x, y and z coordinates, the
// number of cells and their node indices, four per cell.
class QUILLON_API PoSFTetrahedronMesh3D : public PoSFMeshOf<PbTetrahedronMesh3D> {
    PO_SFMESH_HEADER(PoSFTetrahedronMesh3D, PbTetrahedronMesh3D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbTetrahedronMesh3D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbTetrahedronMesh3D& mesh) const override;
};
