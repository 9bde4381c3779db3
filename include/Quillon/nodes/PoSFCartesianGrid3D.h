#pragma once
#include <Quillon/3Ddata/PbCartesianGrid3D.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMeshOf.h>

// Field holding a curvilinear volume grid.  Its header in scene files:
// num_x, num_y and num_z, then the x, y and z coordinates of the nodes
// (num_x * num_y * num_z values each).
class QUILLON_API PoSFCartesianGrid3D : public PoSFMeshOf<PbCartesianGrid3D> {
    PO_SFMESH_HEADER(PoSFCartesianGrid3D, PbCartesianGrid3D);

protected:
    void writeHeaderOf(PiMeshSink& sink, const PbCartesianGrid3D& mesh) const override;
    bool readHeaderOf(PiMeshSource& source, PbCartesianGrid3D& mesh) const override;
};
