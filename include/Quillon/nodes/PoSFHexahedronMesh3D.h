#pragma once
#include <Quillon/3Ddata/PbHexahedronMesh3D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding an unstructured volume mesh of hexahedra.  Its header in
// scene files: the number of nodes, their x, y and z coordinates, the
// number of cells and their node indices, eight per cell.
class QUILLON_API PoSFHexahedronMesh3D : public PoSFMeshOf<PbHexahedronMesh3D> {
    PO_SFMESH_HEADER(PoSFHexahedronMesh3D, PbHexahedronMesh3D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbHexahedronMesh3D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbHexahedronMesh3D& mesh) const override;
};
