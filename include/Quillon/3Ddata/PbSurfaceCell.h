#pragma once
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/QuillonApi.h>

// Base of the surface cells (triangle, quadrangle, pixel): cells of a
// surface mesh whose nodes may lie in the plane z = 0 (mesh without z
// coordinates) or anywhere in space.  A surface cell has no volume, no
// isosurface case and a fixed ordering.
class QUILLON_API PbSurfaceCell : public PbCell {
public:
    float getVolume() const override { return 0.0f; }
    unsigned char getIsosurfCaseId(const std::vector<bool>& nodeFlags) const override;

    // Whether the filling mesh has z coordinates.
    bool hasZ() const { return m_hasZ; }

protected:
    PbSurfaceCell(const Shape& shape, const PbMesh* owner) : PbCell(shape, owner) {}

    void nodesChanged(bool hasZ) override { m_hasZ = hasZ; }
    // For a mesh with z coordinates, whether the point lies near the cell's
    // plane: its distance along the unit normal from node 0 must be below a
    // third of the reference length.  Always true without z coordinates.
    bool isNearPlane(const SbVec3f& point, const SbVec3f& unitNormal, float length) const;
    // The axis of the largest absolute component; the lowest of equal ones
    // wins.
    static int dominantAxis(const SbVec3f& normal);

private:
    bool m_hasZ = true;
};
