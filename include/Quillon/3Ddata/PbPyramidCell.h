#pragma once
#include <Quillon/3Ddata/PbVolumeCell.h>
#include <Quillon/QuillonApi.h>

// Pyramid with a quadrangular base (nodes 0 to 3) and its apex (node 4).
// The apex sits at parametric (0,0,1), not above the centre of the base, and
// the weights are built on that choice.  Points are located by Newton's
// method.
class QUILLON_API PbPyramidCell : public PbVolumeCell {
public:
    explicit PbPyramidCell(const PbMesh* owner = nullptr);

    // Builds (first call) or counts (later calls) the marching-case table;
    // returns 1.
    static int init();
    // Frees the table when every init() has been matched.
    static void finish();

    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    // (1-r)(1-s)(1-t), r(1-s)(1-t), rs(1-t), (1-r)s(1-t), t.
    void getWeight(const SbVec3f& pcoord, float* weights) const override;
    void getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const override;
    int getOrdering() const override;

protected:
    PiMarchingCaseTable& caseTable() const override;
};
