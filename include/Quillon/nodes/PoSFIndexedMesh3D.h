#pragma once
#include <Quillon/3Ddata/PbIndexedMesh3D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding an unstructured volume mesh of tetrahedra, pyramids, wedges
// and hexahedra.  Its header in scene files: the number of nodes, their x,
// y and z coordinates, the number of cells, each cell's number of nodes and
// the node indices of the cells.
class QUILLON_API PoSFIndexedMesh3D : public PoSFMeshOf<PbIndexedMesh3D> {
    PO_SFMESH_HEADER(PoSFIndexedMesh3D, PbIndexedMesh3D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbIndexedMesh3D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbIndexedMesh3D& mesh) const override;
};
