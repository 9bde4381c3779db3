#pragma once
#include <Quillon/3Ddata/PbSurfaceCell.h>
#include <Quillon/QuillonApi.h>

// Triangle of a surface mesh.  Points are located in closed form after
// projection on the coordinate plane most facing the triangle.
class QUILLON_API PbTriangleCell : public PbSurfaceCell {
public:
    explicit PbTriangleCell(const PbMesh* owner = nullptr);

    // Half the length of the cross product of the edges from node 0.
    float getArea() const override;
    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    // 1-r-s, r, s.
    void getWeight(const SbVec3f& pcoord, float* weights) const override;
    void print(FILE* fp) const override;

    // 0 when the projected triangle is degenerate (no point is ever found).
    int isValid() const { return m_valid; }
    // Projection plane: 0 the y,z plane, 1 the x,z plane, 2 the x,y plane.
    int getProjectionPlane() const { return m_plane; }
    const SbVec3f& getNormal() const { return m_normal; }

protected:
    void nodesChanged(bool hasZ) override;

private:
    void project(const SbVec3f& point, float& h, float& k) const;

    float m_matrix[4] = {1.0f, 0.0f, 0.0f, 1.0f};
    float m_translate[2] = {0.0f, 0.0f};
    int m_valid = 1;
    int m_plane = 2;
    SbVec3f m_normal{0.0f, 0.0f, 1.0f};
};
