#pragma once
#include <Quillon/3Ddata/PbParalCartesianGrid3D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a rectilinear volume grid.  Its header in scene files:
// num_x, num_y and num_z, then the num_x x, num_y y and num_z z
// coordinates.
class QUILLON_API PoSFParalCartesianGrid3D : public PoSFMeshOf<PbParalCartesianGrid3D> {
    PO_SFMESH_HEADER(PoSFParalCartesianGrid3D, PbParalCartesianGrid3D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbParalCartesianGrid3D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbParalCartesianGrid3D& mesh) const override;
};
