#pragma once
#include <Quillon/3Ddata/PoVolumwright.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/SbVec3f.h>
#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>
#include <Inventor/fields/SoSFNode.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class PbDataMapping;
class PbIsovaluesList;
class PbMesh;
class PiTextureContouring;
class PiVolumwright;
class PoCellFilter;
class SoCoordinate3;
class SoGroup;
class SoIndexedShape;
class SoMaterial;
class SoShapeHints;

// Base of the representations of data on a mesh.  It settles, once for all
// of them, which mesh, value set, data mapping and isovalues list a
// representation uses, which colouring is really in force for a rebuild,
// and how vertices get their colours.
//
// Objects set on the kit win over the traversal state's; an unset one is
// taken from the state, during traversals only.  The effective colouring
// lowers the asked one when inputs are missing: contouring without an
// isovalues list (or with fewer than two isovalues, which make no bands)
// draws as mapping, and any colouring without a data mapping or without the
// value set valuesIndex draws in the inherited material.
//
// Rebuilds of mesh representations share class-wide scratch buffers: they
// run on one thread at a time (the library's rebuild lock sees to that).
class QUILLON_API PoMesh : public PoVolumwright {
    PO_KIT_ABSTRACT_HEADER(PoMesh);

public:
    enum ColoringType {
        COLOR_INHERITED = 0,
        COLOR_AVERAGE = 1,
        COLOR_MAPPING = 2,
        COLOR_CONTOURING = 3,
        COLOR_TEXTURE_CONTOURING = 4
    };

    // The scalar value set that colours the representation (negative: none).
    SoSFInt32 valuesIndex;
    // The value set handed to the cell filter (negative: none).
    SoSFInt32 valuesIndexForCellFilter;
    // The vector set of vector representations (negative: none).
    SoSFInt32 vecsIndex;
    SoSFEnum coloringType;
    // Texture contouring interpolates colours inside the bands.
    SoSFBool smoothTextureContouring;
    // Radians; the preference TEK_3DDATA_CREASE_ANGLE gives the default.
    SoSFFloat creaseAngle;
    // A data-mapping node that supplies the module data mapping of vector
    // representations.  Neither written nor read.
    SoSFNode moduleDataMappingNode;

    // The getters answer the object set on the kit, else (during a
    // traversal) the state's, which they make a dependency of the kit.
    // The mesh set on the kit, else the state's.
    const PbMesh* getMesh(void);
    void setDataMapping(PbDataMapping* mapping);
    const PbDataMapping* getDataMapping(void);
    void setModuleDataMapping(PbDataMapping* mapping);
    const PbDataMapping* getModuleDataMapping(void);
    void setIsovaluesList(PbIsovaluesList* list);
    const PbIsovaluesList* getIsovaluesList(void);
    // The state's cell filter (there is no setter).
    const PoCellFilter* getCellFilter(void);

    // Bytes held by this kit, and by the class-wide buffers.
    virtual size_t getMemorySize(void) const;
    static size_t getClassMemorySize(void);

    void basicObjectChange(PbBase* object) override;

protected:
    PoMesh();
    ~PoMesh() override;

    // Connects the kit to a mesh of the kind that the derived level draws.
    void setMeshObject(PbMesh* mesh);
    // The state's mesh of the derived level's kind.
    virtual const PbMesh* readStateMesh(void);

    void preRebuild(void) override;
    void postRebuild(void) override;
    void setDefaultOnNonWritingFields(void) override;

    // The snapshot that preRebuild takes.
    const PbDataMapping* getCurrentDataMapping(void) const { return m_currentDataMapping; }
    const PbDataMapping* getCurrentModuleDataMapping(void) const {
        return m_currentModuleDataMapping;
    }
    const PbIsovaluesList* getCurrentIsovaluesList(void) const { return m_currentIsovaluesList; }
    const PbMesh* getCurrentMesh(void) const { return m_currentMesh; }
    ColoringType getEffectiveColoring(void) const { return m_coloring; }
    ColoringType getPreviousColoring(void) const { return m_previousColoring; }
    void setEffectiveColoring(ColoringType coloring) { m_coloring = coloring; }
    // The texture of the colour bands, made by preRebuild for texture
    // contouring (null before).
    PiTextureContouring* getTextureContouring(void) const { return m_textureContouring.get(); }

    // The data mapping's element (when coloringType is not inherited) and
    // the isovalues list's (when it is contouring or texture contouring, or
    // when forced) made dependencies of the kit; each returns the object
    // that the kit then uses.
    const PbDataMapping* addDataMappingInCache(void);
    const PbIsovaluesList* addIsovaluesListInCache(bool force = false);

    // Whether the mesh's value set holds a value for every node (or cell,
    // as it is bound); posts an error when it falls short.
    bool isValuesSetComplete(const PbMesh& mesh, int setIndex) const;
    // The value that colours a cell in average colouring: an enabled
    // threshold that some node value reaches (the maximum first), else the
    // mean of the node values.
    float averageCellValue(const float* values, const int* nodes, int numNodes) const;

    // Fills a material with one diffuse colour per value (and, when the data
    // mapping has transparency on, one transparency per value), a new one
    // when newMaterial is set.  Without values, the class-wide value buffer
    // is used.  A value that the mapping gives no colour, or that is not
    // finite, is black, and fully transparent when transparency is on.
    void mapColor(int count, const float* values, int newMaterial);
    SoMaterial* getMaterial(void) const { return m_material; }
    // A new material, empty, as the kit's material.
    SoMaterial* newMaterial(void);
    // Per-vertex normals of an indexed shape with the kit's crease angle.
    void computeNormal(SoIndexedShape* shape, const SoCoordinate3* coordinates);
    // Appends a clockwise shape-hints node with the kit's crease angle to
    // the group.
    virtual void insertDefaultShapeHints(void);
    SoShapeHints* getShapeHints(void) const { return m_shapeHints; }
    // The group that the kit's built nodes go into.
    void setGroup(SoGroup* group) { m_group = group; }
    SoGroup* getGroup(void) const { return m_group; }
    // Forgets the built nodes (without releasing them).
    void clearTekNodes(void);
    void setTekCoordinates(SoCoordinate3* coordinates) { m_coordinates = coordinates; }
    SoCoordinate3* getTekCoordinates(void) const { return m_coordinates; }

    // The vertex array, kept between calls: enlarged (contents lost) only
    // when smaller than n.
    SbVec3f* newSbVec3f(int n);

    void push_back_coord_index(int32_t index) { m_coordIndex.push_back(index); }
    void push_back_cell_index(int32_t index) { m_cellIndex.push_back(index); }
    static void push_back_value(float value) { m_pointValues.push_back(value); }
    // Hands the coordinate-index list to the shape.
    void update_coord_index(SoIndexedShape* shape);
    std::vector<int32_t>& getCoordIndexList(void) { return m_coordIndex; }
    std::vector<int32_t>& getCellIndexList(void) { return m_cellIndex; }

    // The isovalue adjustment of the contouring (see PiVolumwright), on
    // the kit's current isovalues list.
    void adjustIsoval(int n, const float* values, float& iso);
    void adjustIsovalMultiple(int n1, const float* values1, int n2, const float* values2, int n3,
                              const float* values3, float& iso);
    void adjustIsovalList(int n1, const float* values1, int n2 = 0, const float* values2 = nullptr,
                          int n3 = 0, const float* values3 = nullptr);
    bool isIsovalAdjusted(void) const;
    const float* getAdjustedIsovalues(int& count) const;

    // Class-wide scratch buffers of points and values.
    static std::vector<SbVec3f> m_points;
    static std::vector<float> m_pointValues;

private:
    template <typename T> void connectObject(T*& member, T* object);
    void settleColoring(void);
    void prepareTextureContouring(void);
    void setComplexity(float textureQuality);

    PbMesh* m_mesh = nullptr;
    PbDataMapping* m_dataMapping = nullptr;
    PbDataMapping* m_moduleDataMapping = nullptr;
    PbIsovaluesList* m_isovaluesList = nullptr;

    const PbDataMapping* m_currentDataMapping = nullptr;
    const PbDataMapping* m_currentModuleDataMapping = nullptr;
    const PbIsovaluesList* m_currentIsovaluesList = nullptr;
    const PbMesh* m_currentMesh = nullptr;
    ColoringType m_coloring = COLOR_INHERITED;
    ColoringType m_previousColoring = COLOR_INHERITED;

    std::unique_ptr<PiTextureContouring> m_textureContouring;
    std::unique_ptr<PiVolumwright> m_isovalueAdjustment;

    SoGroup* m_group = nullptr;
    SoMaterial* m_material = nullptr;
    SoShapeHints* m_shapeHints = nullptr;
    SoCoordinate3* m_coordinates = nullptr;
    std::vector<int32_t> m_coordIndex;
    std::vector<int32_t> m_cellIndex;
    std::vector<SbVec3f> m_vertices;
    SoFieldList m_fields;
};
