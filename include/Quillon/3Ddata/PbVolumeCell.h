#pragma once
#include <Quillon/3Ddata/PbCell.h>
#include <Quillon/QuillonApi.h>

class PiMarchingCaseTable;

// Base of the volume cells (tetrahedron, pyramid, wedge, hexahedron,
// voxel).  Each kind owns a process-wide table of marching cases, built by
// the kind's static init() (a counted call; finish() frees the table when
// the count returns to 0) and read through getMCcase().
class QUILLON_API PbVolumeCell : public PbCell {
public:
    // Sum of the areas of the facets.
    float getArea() const override;
    // Volume enclosed by the facets, summed as cones from the cell's centre
    // (each quadrangular facet split into four triangles at its centre).
    float getVolume() const override;
    const PiMarchingCase* getMCcase(unsigned char caseId) const override;
    unsigned char getIsosurfCaseId(const std::vector<bool>& nodeFlags) const override;

    // Derivatives of the weights with respect to r, s and t at pcoord
    // (getNumNodes() floats are written to each array).
    virtual void getDerivs(const SbVec3f& pcoord, float* dr, float* ds, float* dt) const = 0;

protected:
    PbVolumeCell(const Shape& shape, const PbMesh* owner) : PbCell(shape, owner) {}

    // The kind's table of marching cases.
    virtual PiMarchingCaseTable& caseTable() const = 0;
    // Newton's method from (0.5, 0.5, 0.5), at most 10 iterations, converged
    // when every coordinate moves by less than 0.001.  Returns 1 when it
    // converged to r, s and t each in [-tolerance, 1 + tolerance]; 0 when it
    // did not, or the Jacobian vanished, or the point lies outside.
    int locateByNewton(const SbVec3f& point, float tolerance, SbVec3f& pcoord) const;
    // 1 when ((Pa - P0) x (Pb - P0)) . (Pc - P0) is positive, else 0.
    int orderingOf(int a, int b, int c) const;
};
