#pragma once
#include <Quillon/3Ddata/PbPolarGrid2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a polar surface grid.  Its header in scene files: num_r
// and num_t, the num_r radii, the num_t angles, the 2D/3D flag and the z
// coordinates (one per node).
class QUILLON_API PoSFPolarGrid2D : public PoSFMeshOf<PbPolarGrid2D> {
    PO_SFMESH_HEADER(PoSFPolarGrid2D, PbPolarGrid2D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbPolarGrid2D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbPolarGrid2D& mesh) const override;
};
