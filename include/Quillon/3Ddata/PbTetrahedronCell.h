#pragma once
#include <Quillon/3Ddata/PbVolumeCell.h>
#include <Quillon/QuillonApi.h>

// Tetrahedron.  Points are located in closed form with the inverse of the
// affine map from parametric to world coordinates, computed on the first
// location after each fill.
class QUILLON_API PbTetrahedronCell : public PbVolumeCell {
public:
    explicit PbTetrahedronCell(const PbMesh* owner = nullptr);

    // Builds (first call) or counts (later calls) the marching-case table;
    // returns 1.
    static int init();
    // Frees the table when every init() has been matched.
    static void finish();

    // |((P1-P0) x (P2-P0)) . (P3-P0)| / 6.
    float getVolume() const override;
    int locatePoint(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const override;
    // 1-r-s-t, r, s, t.
    void getWeight(const SbVec3f& pcoord, float* weights) const override;
    void getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const override;
    void print(FILE* fp) const override;
    int getOrdering() const override;

protected:
    void nodesChanged(bool hasZ) override;
    PiMarchingCaseTable& caseTable() const override;

private:
    void computeInverse() const;

    mutable float m_inverse[3][3] = {};
    mutable bool m_inverseComputed = false;
    mutable bool m_invertible = false;
};
