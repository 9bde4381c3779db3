#pragma once
#include <Quillon/3Ddata/PbTriangleMesh2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding an unstructured surface mesh of triangles.  Its header in
// scene files: the number of nodes, their x and y coordinates, the 2D/3D
// flag and z, the number of cells and their node indices, three per cell.
class QUILLON_API PoSFTriangleMesh2D : public PoSFMeshOf<PbTriangleMesh2D> {
    PO_SFMESH_HEADER(PoSFTriangleMesh2D, PbTriangleMesh2D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbTriangleMesh2D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbTriangleMesh2D& mesh) const override;
};
