#pragma once
#include <Quillon/3Ddata/PbVolumeCell.h>
#include <Quillon/QuillonApi.h>

// Hexahedron: quadrangle 0 1 2 3 at the bottom, 4 5 6 7 above it.  Points
// are located by Newton's method.
class QUILLON_API PbHexahedronCell : public PbVolumeCell {
public:
    explicit PbHexahedronCell(const PbMesh* owner = nullptr);

    // Builds (first call) or counts (later calls) the marching-case table;
    // returns 1.
    static int init();
    // Frees the table when every init() has been matched.
    static void finish();

    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    // trilinear: (1-r)(1-s)(1-t), r(1-s)(1-t), rs(1-t), (1-r)s(1-t),
    // (1-r)(1-s)t, r(1-s)t, rst, (1-r)st.
    void getWeight(const SbVec3f& pcoord, float* weights) const override;
    void getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const override;
    int getOrdering() const override;

protected:
    PiMarchingCaseTable& caseTable() const override;
};
