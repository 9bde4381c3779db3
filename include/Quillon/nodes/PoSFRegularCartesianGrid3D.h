#pragma once
#include <Quillon/3Ddata/PbRegularCartesianGrid3D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a regular volume grid.  Its header in scene files: num_x,
// num_y and num_z, then the minimum and the maximum corner.
class QUILLON_API PoSFRegularCartesianGrid3D : public PoSFMeshOf<PbRegularCartesianGrid3D> {
    PO_SFMESH_HEADER(PoSFRegularCartesianGrid3D, PbRegularCartesianGrid3D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbRegularCartesianGrid3D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbRegularCartesianGrid3D& mesh) const override;
};
