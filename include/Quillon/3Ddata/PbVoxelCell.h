#pragma once
#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/QuillonApi.h>

// Axis-aligned hexahedron of a grid, located without iteration.  Node 0 is
// the (xmin, ymin, zmin) corner and node 6 the opposite one.  It shares the
// hexahedron's tables, weights and marching cases.
class QUILLON_API PbVoxelCell : public PbHexahedronCell {
public:
    explicit PbVoxelCell(const PbMesh* owner = nullptr);

    // The product of the three sizes.
    float getVolume() const override;
    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    void print(FILE* fp) const override;
    // Always 1: the node order of an axis-aligned cell is fixed.
    int getOrdering() const override { return 1; }

    // Fills the cell from its lower corner and its sizes along x, y and z.
    void setBox(int index, const int* nodeIndex, const SbVec3f& minCorner, const SbVec3f& size);

protected:
    void nodesChanged(bool hasZ) override;

private:
    SbVec3f m_min{0.0f, 0.0f, 0.0f};
    SbVec3f m_size{1.0f, 1.0f, 1.0f};
};
