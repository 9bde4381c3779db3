#pragma once
#include <Quillon/3Ddata/PoMesh3D.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoSFPlane.h>

#include <memory>
#include <vector>

class PbGrid3D;
class PiPlaneSection;

// The section of a volume mesh by a plane, coloured by the value set
// valuesIndex (see PoMesh3D for the colourings).
//
// Two methods.  Intersection cuts each cell by the plane into one polygon
// (a grid whose nodes lie on axes, cut across an axis, is cut in the one
// layer of cells that the plane crosses), drawn with the plane's normal.
// Isosurface draws the level surface of the nodes' distances along the
// plane's normal at the plane's distance from the origin; the distances
// are kept: they are computed again only when the mesh's geometry changes
// or the normal turns (the dot product of the new and the kept normal 0.9999
// or less), so that moving the plane along its normal only changes the
// level.  The method is chosen at each rebuild:
//   1. intersection when the mesh says the cut is optimal for it
//      (PbMesh3D::isCrossSectionOptimal), else isosurface;
//   2. isosurface when a cell filter is in the state;
//   3. the preference TEK_3DDATA_CROSS_SECTION_METHOD, "ISOSURFACE" or
//      "INTERSECTION" in any case, when set;
//   4. the forced method, when set.
// A plane without a normal is refused with an error and draws nothing.
class QUILLON_API PoMeshCrossSection : public PoMesh3D {
    PO_KIT_HEADER(PoMeshCrossSection);
    SO_KIT_CATALOG_ENTRY_HEADER(groupCrossSection);

public:
    enum CrossSectionMethod { ISOSURFACE = 0, INTERSECTION = 1 };
    enum ForcedMethod { NO_FORCED_METHOD = 0, FORCED_ISOSURFACE = 1, FORCED_INTERSECTION = 2 };

    SoSFPlane plane;

    PoMeshCrossSection();

    void setForcedMethod(ForcedMethod method);
    ForcedMethod getForcedMethod(void) const { return m_forcedMethod; }
    // The method of the last rebuild.
    CrossSectionMethod getMethod(void) const { return m_method; }
    // How many times the distances of the isosurface method were computed.
    unsigned int getNumDistanceComputations(void) const { return m_numDistanceComputations; }

    // The cuts of the intersection method, which the meshes call back
    // (PbMesh3D::meshCrossSection): every cell, or a grid whose nodes lie
    // on axes across one of its axes (0 for x, 1 for y, 2 for z).
    void crossSectionCells(const PbMesh3D* mesh);
    void crossSectionAcrossAxis(const PbGrid3D* grid, int axis);

    size_t getMemorySize(void) const override;

protected:
    ~PoMeshCrossSection() override;

    void rebuild(void) override;
    void setDefaultOnNonWritingFields(void) override;

    const float* getIsosurfDataSet(void) override;
    float getIsosurfValue(void) override;
    unsigned int getIsosurfDataSetId(void) override;
    bool getIsosurfAxisTerms(const float* terms[3]) override;

private:
    CrossSectionMethod chooseMethod(const PbMesh3D& mesh);
    void drawIntersection(const PbMesh3D& mesh);
    void updateDistances(const PbMesh3D& mesh);
    void computeDistances(const PbMesh3D& mesh, const SbVec3f& normal);

    ForcedMethod m_forcedMethod = NO_FORCED_METHOD;
    CrossSectionMethod m_method = ISOSURFACE;
    std::unique_ptr<PiPlaneSection> m_section;

    // The isosurface method's distances: per node, or per index along each
    // axis for the grids whose nodes lie on axes.
    std::vector<float> m_distances;
    std::vector<float> m_axisDistances[3];
    bool m_hasDistances = false;
    SbVec3f m_distancesNormal;
    unsigned int m_distancesGeometryId = 0;
    float m_level = 0.0f;
    unsigned int m_changeCounter = 0;
    unsigned int m_numDistanceComputations = 0;
};
