#pragma once
#include <Quillon/3Ddata/PbQuadrangleCell.h>
#include <Quillon/QuillonApi.h>

// Axis-aligned rectangle of a surface grid, located without iteration.
// Node 0 is the (xmin, ymin) corner and node 2 the opposite one.
class QUILLON_API PbPixelCell : public PbQuadrangleCell {
public:
    explicit PbPixelCell(const PbMesh* owner = nullptr);

    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    void print(FILE* fp) const override;

    // Fills the cell from its lower corner and its sizes along x and y
    // (size[2] is ignored; the nodes lie at minCorner's z).
    void setBox(int index, const int* nodeIndex, const SbVec3f& minCorner, const SbVec3f& size);

protected:
    void nodesChanged(bool hasZ) override;

private:
    float m_xmin = 0.0f;
    float m_ymin = 0.0f;
    float m_dx = 1.0f;
    float m_dy = 1.0f;
};
