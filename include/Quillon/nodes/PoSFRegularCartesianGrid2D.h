#pragma once
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a regular surface grid.  Its header in scene files: num_x
// and num_y, x_min and y_min, x_max and y_max, the 2D/3D flag and the z
// coordinates (one per node).
class QUILLON_API PoSFRegularCartesianGrid2D : public PoSFMeshOf<PbRegularCartesianGrid2D> {
    PO_SFMESH_HEADER(PoSFRegularCartesianGrid2D, PbRegularCartesianGrid2D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbRegularCartesianGrid2D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbRegularCartesianGrid2D& mesh) const override;
};
