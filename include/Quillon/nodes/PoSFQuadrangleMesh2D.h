#pragma once
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding an unstructured surface mesh of quadrangles.  Its header in
// scene files: the number of nodes, their x and y coordinates, the 2D/3D
// flag and z, the number of cells and their node indices, four per cell.
class QUILLON_API PoSFQuadrangleMesh2D : public PoSFMeshOf<PbQuadrangleMesh2D> {
    PO_SFMESH_HEADER(PoSFQuadrangleMesh2D, PbQuadrangleMesh2D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbQuadrangleMesh2D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbQuadrangleMesh2D& mesh) const override;
};
