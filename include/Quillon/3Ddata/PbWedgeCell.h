#pragma once
#include <Quillon/3Ddata/PbVolumeCell.h>
#include <Quillon/QuillonApi.h>

// Wedge (triangular prism): triangle 0 1 2 at the bottom, 3 4 5 above it.
// Points are located by Newton's method.
class QUILLON_API PbWedgeCell : public PbVolumeCell {
public:
    explicit PbWedgeCell(const PbMesh* owner = nullptr);

    // Builds (first call) or counts (later calls) the marching-case table;
    // returns 1.
    static int init();
    // Frees the table when every init() has been matched.
    static void finish();

    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    // (1-r-s)(1-t), r(1-t), s(1-t), (1-r-s)t, rt, st.
    void getWeight(const SbVec3f& pcoord, float* weights) const override;
    void getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const override;
    int getOrdering() const override;

protected:
    PiMarchingCaseTable& caseTable() const override;
};
