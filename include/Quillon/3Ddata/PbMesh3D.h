#pragma once
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/QuillonApi.h>

class PoMeshCrossSection;
class SbPlane;

// Base of the volume meshes: structured grids and unstructured meshes of
// tetrahedra, pyramids, wedges and hexahedra.
class QUILLON_API PbMesh3D : public PbMesh {
public:
    // Sum of the cells' volumes.
    float getVolume() const override;
    // Area of the mesh's boundary: the facets that belong to one cell only.
    float getArea() const override;
    // The longest edge of all cells.
    float getLongestEdgeLength() const override;

    // True when a cross section by this plane is best computed by cutting
    // the cells directly rather than as a level surface of the distance to
    // the plane: so for axis-aligned grids cut across one of their axes,
    // where the cut cells form a single slab found without visiting the
    // others.  False here.
    virtual int isCrossSectionOptimal(const SbPlane& plane) const;
    // Draws the section by the kit's plane through the kit, cell by cell
    // here (PoMeshCrossSection::crossSectionCells).
    virtual void meshCrossSection(PoMeshCrossSection* kit) const;

protected:
    explicit PbMesh3D(int isDataDuplicate) : PbMesh(isDataDuplicate) {}
};
