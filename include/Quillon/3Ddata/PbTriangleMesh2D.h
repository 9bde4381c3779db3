#pragma once
#include <Quillon/3Ddata/PbFixedCellMesh2D.h>
#include <Quillon/QuillonApi.h>

// Unstructured surface mesh of triangles, given by 3 node indices per cell.
//
// Fault meshes.  PbMesh2D::getFaultMesh returns a triangle mesh whose first
// nodes are those of the source mesh and whose other nodes, the fault nodes,
// lie on fault lines (fault points, crossings of faults with each other or
// with the boundary, split points).  Evaluating a fault node interpolates
// per-node values of the source mesh at the node's (x, y) position, with the
// interpolation of the source cell that contains it (linear in a triangle,
// bilinear in a quadrangle); the form with derivatives also gives the
// gradient (d/dx, d/dy) of that interpolation there.  Any node of any
// triangle mesh may be evaluated this way against any surface mesh.
class QUILLON_API PbTriangleMesh2D : public PbFixedCellMesh2D {
public:
    explicit PbTriangleMesh2D(int isDataDuplicate = 1);

    void meshFilled(PoMeshFilled* kit) const override;

    // sourceValues holds one value per node of source.  Returns 1 with the
    // value (and gradient), or 0 leaving them untouched when the node lies
    // outside the source mesh; an invalid node or null values are reported.
    // Each call prepares a search over the source's cells, a pass over the
    // whole source mesh.
    int evaluateFaultNode(int nodeIndex, const PbMesh2D& source, const float* sourceValues,
                          float& value) const;
    int evaluateFaultNodeWithDerivs(int nodeIndex, const PbMesh2D& source,
                                    const float* sourceValues, float& value, SbVec2f& derivs) const;

private:
    bool evaluate(const char* method, int nodeIndex, const PbMesh2D& source,
                  const float* sourceValues, float& value, SbVec2f& derivs) const;
};
