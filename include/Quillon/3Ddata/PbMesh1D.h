#pragma once
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/QuillonApi.h>

// Base of the line meshes: size nodes along the x axis, node i at
// (getX(i), 0, 0), and size - 1 segments, segment s joining nodes s and
// s + 1.  Value sets give, for instance, the ordinates of curves.  There is
// no cell object for a segment: getCell and findContainingCell give null;
// findSegment locates points along the line.
class QUILLON_API PbMesh1D : public PbMesh {
public:
    ~PbMesh1D() override;

    int getSize() const { return m_numNodes; }
    virtual float getX(int nodeIndex) const = 0;

    // The segment holding x, with the fraction of the way from its first
    // node to its second; of two segments sharing x, the lower one.  -1 when
    // x lies outside the line.
    virtual int findSegment(float x, float& fraction) const;
    // Per-node values interpolated linearly at x; returns 0 leaving value
    // untouched when x lies outside the line.
    int getValue(float x, const float* values, float& value) const;

    SbVec3f getNodeCoord(int nodeIndex) const override;
    // The segments on either side of the node.
    void getNodeOwnerCellsInd(int nodeIndex, PbArrayOfInt& cellIndices) const override;
    const PbCell* getCell(int cellIndex) const override;
    float getVolume() const override;
    float getArea() const override;

protected:
    explicit PbMesh1D(int isDataDuplicate);

    void updateBoundingBox() const override;
    const PbCell* findContainingCellProtected(const SbVec3f& point, float tolerance,
                                              SbVec3f& pcoord,
                                              PbArrayOfInt& testedCells) const override;
    // Tests every segment in order.
    int findSegmentInOrder(float x, float& fraction) const;
    bool checkSize(const char* method, int size) const;
    // Stores the size, drops the sets when their size no longer matches,
    // draws new ids and notifies a geometry change.
    void finishGeometry(int size);
};
