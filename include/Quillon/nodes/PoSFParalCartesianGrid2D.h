#pragma once
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a rectilinear surface grid.  Its header in scene files:
// num_x and num_y, the num_x x coordinates, the num_y y coordinates, the
// 2D/3D flag and the z coordinates (one per node).
class QUILLON_API PoSFParalCartesianGrid2D : public PoSFMeshOf<PbParalCartesianGrid2D> {
    PO_SFMESH_HEADER(PoSFParalCartesianGrid2D, PbParalCartesianGrid2D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbParalCartesianGrid2D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbParalCartesianGrid2D& mesh) const override;
};
