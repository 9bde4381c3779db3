#pragma once
#include <Quillon/3Ddata/PoMesh2D.h>
#include <Quillon/QuillonApi.h>

#include <Inventor/fields/SoSFBool.h>

#include <memory>

class PbCartesianGrid2D;
class PbGrid2D;
class PbIndexedMesh2D;
class PbParalCartesianGrid2D;
class PbPolarGrid2D;
class PbQuadrangleMesh2D;
class PbRegularCartesianGrid2D;
class PbTriangleMesh2D;
class PiContouringFilled;
class SoMaterialBinding;
class SoNormal;
class SoTexture2;
class SoTextureCoordinate2;

// Declares a mesh kind's operation and its five colourings.
#define PO_MESH_FILLED_KIND_HEADER(_kind_, _Mesh_)                                                 \
    void _kind_##Filled(const _Mesh_* mesh);                                                       \
    void _kind_##FilledInhColr(const _Mesh_* mesh);                                                \
    void _kind_##FilledAvergColr(const _Mesh_* mesh);                                              \
    void _kind_##FilledMapColr(const _Mesh_* mesh);                                                \
    void _kind_##FilledContColr(const _Mesh_* mesh);                                               \
    void _kind_##FilledTexContColr(const _Mesh_* mesh)

// A surface mesh drawn as filled faces, coloured by the effective colouring
// (see PoMesh): the inherited material, one averaged colour per cell, the
// data mapping's colour at every node, colour bands cut along the
// isovalues, or a colour-band texture.  Grids become an SoQuadMesh, the
// other kinds an SoIndexedFaceSet with one face per cell (reversed where
// the mesh's element orientation asks).  The mesh draws itself through the
// kit (PbMesh2D::meshFilled), which calls the operation of the mesh's kind.
//
// Colour bands follow PiBandColors: each band takes the data mapping's
// colour of its middle value, in both contouring colourings.  Values that
// are not finite leave the cells around them out of the bands.
class QUILLON_API PoMeshFilled : public PoMesh2D {
    PO_KIT_HEADER(PoMeshFilled);
    SO_KIT_CATALOG_ENTRY_HEADER(groupFilled);

public:
    // A flat mesh drawn with one normal, that of its first cell.
    SoSFBool useOverallNormal;

    PoMeshFilled();

    // The operations that the mesh kinds call back.
    PO_MESH_FILLED_KIND_HEADER(cartGrid, PbCartesianGrid2D);
    PO_MESH_FILLED_KIND_HEADER(paralCartGrid, PbParalCartesianGrid2D);
    PO_MESH_FILLED_KIND_HEADER(regularCartGrid, PbRegularCartesianGrid2D);
    PO_MESH_FILLED_KIND_HEADER(polarGrid, PbPolarGrid2D);
    PO_MESH_FILLED_KIND_HEADER(indexedMesh, PbIndexedMesh2D);
    PO_MESH_FILLED_KIND_HEADER(quadrangleMesh, PbQuadrangleMesh2D);
    PO_MESH_FILLED_KIND_HEADER(triangleMesh, PbTriangleMesh2D);

    // The number of band faces of the last contour-coloured rebuild.
    int getNumContouringFaces(void) const;

protected:
    ~PoMeshFilled() override;

    void rebuild(void) override;
    void insertDefaultShapeHints(void) override;
    void setDefaultOnNonWritingFields(void) override;

private:
    // A kind's five colourings, in the order of ColoringType.
    template <typename Mesh> struct KindColorings {
        void (PoMeshFilled::*colorings[5])(const Mesh* mesh);
    };

    template <typename Mesh> void fillKind(const Mesh& mesh, const KindColorings<Mesh>& colorings);
    void addOverallNormal(const PbMesh2D& mesh);
    void readNodeValues(const PbMesh2D& mesh);
    void addMaterialBinding(int binding);

    // The five colourings, written once for every kind.
    template <typename Mesh> void filledInherited(const Mesh& mesh);
    template <typename Mesh> void filledAverage(const Mesh& mesh);
    template <typename Mesh> void filledMapping(const Mesh& mesh);
    template <typename Mesh> void filledContouring(const Mesh& mesh);
    template <typename Mesh> void filledTextureContouring(const Mesh& mesh);

    std::unique_ptr<PiContouringFilled> m_contouring;
    SoNormal* m_overallNormal = nullptr;
    // The nodes of the current rebuild.
    SoMaterialBinding* m_materialBinding = nullptr;
    SoTexture2* m_texture = nullptr;
    SoTextureCoordinate2* m_textureCoordinates = nullptr;
    const float* m_values = nullptr;
    const float* m_z = nullptr;
    // The value set that gives the nodes' z, or -1 for the mesh's own.
    int m_zSetIndex = -1;
};
