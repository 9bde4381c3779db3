#pragma once
#include <Quillon/3Ddata/PbRegularMesh1D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a line mesh of evenly spaced nodes.  Its header in scene
// files: the size, then xmin and xmax.
class QUILLON_API PoSFRegularMesh1D : public PoSFMeshOf<PbRegularMesh1D> {
    PO_SFMESH_HEADER(PoSFRegularMesh1D, PbRegularMesh1D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbRegularMesh1D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbRegularMesh1D& mesh) const override;
};
