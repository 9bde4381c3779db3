#pragma once
#include <Quillon/3Ddata/PbSurfaceCell.h>
#include <Quillon/QuillonApi.h>

// Quadrangle of a surface mesh.  Points are located by Newton's method on
// the two coordinates that the quadrangle's normal does not dominate.
class QUILLON_API PbQuadrangleCell : public PbSurfaceCell {
public:
    explicit PbQuadrangleCell(const PbMesh* owner = nullptr);

    // Half the length of the cross product of the diagonals.
    float getArea() const override;
    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    // (1-r)(1-s), r(1-s), rs, (1-r)s.
    void getWeight(const SbVec3f& pcoord, float* weights) const override;

    // Derivatives of the weights with respect to r and s.
    static void getDerivs(const SbVec3f& pcoord, float* dr, float* ds);

protected:
    void nodesChanged(bool hasZ) override;

private:
    // Newton's method on the coordinates axisU and axisV; returns 0 when the
    // Jacobian vanishes or the iteration does not converge.
    int locatePointOnXY(const SbVec3f& point, int axisU, int axisV, SbVec3f& pcoord) const;

    SbVec3f m_unitNormal{0.0f, 0.0f, 1.0f};
    int m_droppedAxis = 2;
};
