#pragma once
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/3Ddata/PoMesh.h>
#include <Quillon/QuillonApi.h>

#include <cstdint>
#include <memory>
#include <vector>

class PbMesh3D;
class PiCrossContour;
class PiEdgePoints;
class PiLevelSurface;
class SbPlane;
class SoIndexedShape;
class SoMaterialBinding;
class SoTexture2;

// Base of the representations of volume meshes, with the machinery of the
// level surfaces (PoMeshLevelSurf, and PoMeshCrossSection's isosurface
// method) and of the outlines of sections (PoMeshCrossContour).
//
// Level surfaces.  A derived kit answers the isosurface queries (which
// value set, which level, which side the faces' fronts look to) and calls
// meshLevelSurf, which cuts the cells by the level (see PiLevelSurface:
// one point per cut mesh edge, shared by the cells around it, faces turned
// to the chosen side; grids without a cell filter take a faster walk that
// gives the same surface) and draws the surface into the kit's group,
// coloured by the effective colouring from the value set valuesIndex
// interpolated at the surface's points.  The surface's topology is kept
// between rebuilds until the mesh's topology, the level's value set, the
// level, the cell filter or its value set change: a new colouring reuses
// it.
class QUILLON_API PoMesh3D : public PoMesh {
    PO_KIT_ABSTRACT_HEADER(PoMesh3D);

public:
    void setMesh(PbMesh3D* mesh);
    const PbMesh3D* getMesh(void);

    // How many times a level surface's topology was cut (rather than kept)
    // by this kit.
    unsigned int getNumLevelSurfCuts(void) const { return m_numLevelSurfCuts; }

protected:
    PoMesh3D();
    ~PoMesh3D() override;

    const PbMesh* readStateMesh(void) override;
    void preRebuild(void) override;

    // The volume mesh of the current rebuild.
    const PbMesh3D* getCurrentMesh3D(void) const { return m_currentMesh3D; }

    // The bracket of a volume representation's rebuild, whose nodes go into
    // the part groupPart.  startRepresentation gives the mesh to draw, with a
    // new group as the kit's group; or null, with the parts emptied, when
    // there is no mesh, an empty one, or, when a cutting plane is given, a
    // plane without a normal (refused with an error under methodName).
    // finishRepresentation puts the texture, the material and the group
    // into the parts and lets the data mapping delete transparent parts.
    const PbMesh3D* startRepresentation(const char* groupPart, const SbPlane* plane = nullptr,
                                        const char* methodName = nullptr);
    void finishRepresentation(const char* groupPart);

    // The isosurface queries: the node values of the surface (null when
    // there are none), its level, the side its fronts face (0 the lower
    // values, 1 the higher ones), the identity of the values' content and
    // their set index.  Here: none, 0, 1, 0 and -1.
    virtual const float* getIsosurfDataSet(void);
    virtual float getIsosurfValue(void);
    virtual int getSurfOrientation(void);
    virtual unsigned int getIsosurfDataSetId(void);
    virtual int getIsosurfDataSetIndex(void);
    // For grids whose nodes lie on axes, values given as sums of terms
    // along the axes, (a[i] + b[j]) + c[k] at node (i, j, k), in place of
    // an array: true with the three term arrays.  Here: false.
    virtual bool getIsosurfAxisTerms(const float* terms[3]);

    // Draws the level surface of the mesh into the kit's group (see above).
    void meshLevelSurf(const PbMesh3D* mesh);
    // The steps of meshLevelSurf.  updateLevelSurfTopology returns false
    // when there is no surface to draw.
    bool updateLevelSurfTopology(const float* dataSet, float level);
    // Forgets the kept topology, so that the next surface is cut anew.
    void clearIsoCells(void);

    // The current mesh's value set of that index when it is bound as asked
    // and holds a value for every node or cell; else null, with an error
    // saying what the kit needs when the set is bound otherwise, or when it
    // falls short.
    const float* boundValuesSet(int setIndex, PbMesh::DataBinding binding, const char* methodName,
                                const char* need);
    // The values of the set valuesIndexForCellFilter for the state's cell
    // filter, one per cell (null without a filter).
    const float* filterCellValues(const PoCellFilter* filter);

    // The outline of the section of the mesh by the plane on the mesh's
    // boundary, as lines in the kit's group, coloured by the data mapping
    // from the value set valuesIndex unless the colouring is inherited.
    void makeCrossContour(const PbMesh3D* mesh, const SbPlane& plane);

    // Draws faces through points on the mesh's edges (strips or faces ended
    // by -1) into the kit's group, with the colouring in force: the
    // bindings and the shape, the coordinates, then the colours or the
    // texture coordinates, or for colour bands the band faces alone.
    void drawEdgeSurface(const PbMesh3D& mesh, const PiEdgePoints& points,
                         const std::vector<int32_t>& coordIndex, bool strips);

    size_t getMemorySize(void) const override;

private:
    // What the kept topology was cut for.
    struct TopologyKey {
        unsigned int topologyId = 0;
        int dataSetIndex = -1;
        unsigned int dataSetId = 0;
        uint64_t filterNodeId = 0;
        unsigned int filterDataSetId = 0;
        int orientation = -1;
        bool strips = true;
        bool operator==(const TopologyKey& other) const;
    };

    // Whether a cutting plane has a normal (and a finite distance); a plane
    // given without one keeps a zero normal.
    static bool hasPlaneNormal(const SbPlane& plane);
    TopologyKey currentTopologyKey(const PoCellFilter* filter, bool strips);
    bool cutLevelSurface(const float* dataSet, float level, const PoCellFilter* filter);
    // The steps of drawEdgeSurface, on the surface being drawn.
    void updateSurfaceShapeBindings(bool strips);
    void updateLevelSurfCoord(void);
    void updateLevelSurfColors(void);
    void updateLevelSurfTextures(void);
    void updateLevelSurfContouring(void);
    void addCoordinates(const PbMesh3D& mesh, const PiEdgePoints& points);
    // The value set valuesIndex at the points, when the colouring uses it.
    bool colorValuesAt(const PiEdgePoints& points, std::vector<float>& values);

    const PbMesh3D* m_currentMesh3D = nullptr;

    std::unique_ptr<PiLevelSurface> m_levelSurface;
    TopologyKey m_topologyKey;
    float m_lastLevel;
    bool m_hasTopology = false;
    unsigned int m_numLevelSurfCuts = 0;
    bool m_strips = true;

    std::unique_ptr<PiCrossContour> m_crossContour;

    // The surface being drawn, its colour values and its nodes.
    const PbMesh3D* m_drawnMesh = nullptr;
    const PiEdgePoints* m_drawnPoints = nullptr;
    const std::vector<int32_t>* m_drawnIndex = nullptr;
    std::vector<float> m_drawnValues;
    SoIndexedShape* m_shape = nullptr;
    SoMaterialBinding* m_materialBinding = nullptr;
    SoTexture2* m_texture = nullptr;
};
