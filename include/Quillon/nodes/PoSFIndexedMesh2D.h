#pragma once
#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding an unstructured surface mesh of triangles and quadrangles.
// Its header in scene files: the number of nodes, their x and y
// coordinates, the 2D/3D flag and z, the number of cells, each cell's number
// of nodes and the node indices of the cells.
class QUILLON_API PoSFIndexedMesh2D : public PoSFMeshOf<PbIndexedMesh2D> {
    PO_SFMESH_HEADER(PoSFIndexedMesh2D, PbIndexedMesh2D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbIndexedMesh2D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbIndexedMesh2D& mesh) const override;
};
