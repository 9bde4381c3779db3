#pragma once
#include <Quillon/3Ddata/PbCartesianGrid2D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a curvilinear surface grid.  Its header in scene files:
// num_x and num_y, the x and then the y coordinates of the nodes
// (num_x * num_y values each), the 2D/3D flag and the z coordinates.
class QUILLON_API PoSFCartesianGrid2D : public PoSFMeshOf<PbCartesianGrid2D> {
    PO_SFMESH_HEADER(PoSFCartesianGrid2D, PbCartesianGrid2D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbCartesianGrid2D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbCartesianGrid2D& mesh) const override;
};
