#pragma once
#include <Quillon/3Ddata/PbIrregularMesh1D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a line mesh of nodes at given x values.  Its header in
// scene files: the size and the x coordinates of the nodes.
class QUILLON_API PoSFIrregularMesh1D : public PoSFMeshOf<PbIrregularMesh1D> {
    PO_SFMESH_HEADER(PoSFIrregularMesh1D, PbIrregularMesh1D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbIrregularMesh1D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbIrregularMesh1D& mesh) const override;
};
