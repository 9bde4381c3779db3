#include <Quillon/3Ddata/PoMeshFilled.h>

#include <Quillon/3Ddata/PbCartesianGrid2D.h>
#include <Quillon/3Ddata/PbIndexedMesh2D.h>
#include <Quillon/3Ddata/PbParalCartesianGrid2D.h>
#include <Quillon/3Ddata/PbPolarGrid2D.h>
#include <Quillon/3Ddata/PbQuadrangleMesh2D.h>
#include <Quillon/3Ddata/PbRegularCartesianGrid2D.h>
#include <Quillon/3Ddata/PbTriangleMesh2D.h>
#include <Quillon/graph/PoDebugError.h>

#include "3Ddata/PiContouringFilled.h"
#include "3Ddata/PiTextureContouring.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>

#include <algorithm>
#include <cmath>
#include <vector>

PO_KIT_SOURCE(PoMeshFilled, PoMesh2D)

// ------------------------------------------------------- the mesh kinds
//
// The kinds differ only in the shape they make and in how their cells are
// walked: grids give their nodes row by row to a quad mesh, the indexed
// kinds one face per cell to a face set.

namespace {
SoShape* makeShape(const PbGrid2D& grid) {
    int numX, numY;
    grid.getDim(numX, numY);
    auto* quads = new SoQuadMesh;
    quads->verticesPerRow = numY;
    quads->verticesPerColumn = numX;
    return quads;
}

// Cells whose orientation flag is not 1 are written backwards.
SoShape* makeShape(const PbIndexedMesh2D& mesh) {
    const int* flags = mesh.getElemOrientation() ? mesh.getOrientFlags() : nullptr;
    std::vector<int32_t> coordIndex;
    for (int c = 0; c < mesh.getNumCells(); ++c) {
        const int* nodes = mesh.getCellNodeIndices(c);
        const int count = mesh.getCellNumNodes(c);
        const size_t first = coordIndex.size();
        coordIndex.insert(coordIndex.end(), nodes, nodes + count);
        if (flags && flags[c] != 1)
            std::reverse(coordIndex.begin() + first, coordIndex.end());
        coordIndex.push_back(-1);
    }
    auto* faces = new SoIndexedFaceSet;
    faces->coordIndex.setValues(0, static_cast<int>(coordIndex.size()), coordIndex.data());
    return faces;
}

// A quad mesh colours its rows per part, its quads per face.
int perCellBinding(const PbGrid2D&) {
    return SoMaterialBinding::PER_FACE;
}

int perCellBinding(const PbIndexedMesh2D&) {
    return SoMaterialBinding::PER_PART;
}

template <typename F> void forEachCell(const PbGrid2D& grid, F&& function) {
    int numX, numY;
    grid.getDim(numX, numY);
    for (int i = 0; i + 1 < numX; ++i) {
        for (int j = 0; j + 1 < numY; ++j) {
            const int n0 = i * numY + j;
            const int nodes[4] = {n0, n0 + numY, n0 + numY + 1, n0 + 1};
            function(nodes, 4);
        }
    }
}

template <typename F> void forEachCell(const PbIndexedMesh2D& mesh, F&& function) {
    for (int c = 0; c < mesh.getNumCells(); ++c)
        function(mesh.getCellNodeIndices(c), mesh.getCellNumNodes(c));
}
} // namespace

// Each kind's operation and its five colourings share one body per
// colouring; the kind only picks the shape and the cell walk.
#define PO_MESH_FILLED_KIND_SOURCE(_kind_, _Mesh_)                                                 \
    void PoMeshFilled::_kind_##Filled(const _Mesh_* mesh) {                                        \
        static const KindColorings<_Mesh_> colorings = {                                           \
            &PoMeshFilled::_kind_##FilledInhColr, &PoMeshFilled::_kind_##FilledAvergColr,          \
            &PoMeshFilled::_kind_##FilledMapColr, &PoMeshFilled::_kind_##FilledContColr,           \
            &PoMeshFilled::_kind_##FilledTexContColr};                                             \
        fillKind(*mesh, colorings);                                                                \
    }                                                                                              \
    void PoMeshFilled::_kind_##FilledInhColr(const _Mesh_* mesh) {                                 \
        filledInherited(*mesh);                                                                    \
    }                                                                                              \
    void PoMeshFilled::_kind_##FilledAvergColr(const _Mesh_* mesh) {                               \
        filledAverage(*mesh);                                                                      \
    }                                                                                              \
    void PoMeshFilled::_kind_##FilledMapColr(const _Mesh_* mesh) {                                 \
        filledMapping(*mesh);                                                                      \
    }                                                                                              \
    void PoMeshFilled::_kind_##FilledContColr(const _Mesh_* mesh) {                                \
        filledContouring(*mesh);                                                                   \
    }                                                                                              \
    void PoMeshFilled::_kind_##FilledTexContColr(const _Mesh_* mesh) {                             \
        filledTextureContouring(*mesh);                                                            \
    }

PO_MESH_FILLED_KIND_SOURCE(cartGrid, PbCartesianGrid2D)
PO_MESH_FILLED_KIND_SOURCE(paralCartGrid, PbParalCartesianGrid2D)
PO_MESH_FILLED_KIND_SOURCE(regularCartGrid, PbRegularCartesianGrid2D)
PO_MESH_FILLED_KIND_SOURCE(polarGrid, PbPolarGrid2D)
PO_MESH_FILLED_KIND_SOURCE(indexedMesh, PbIndexedMesh2D)
PO_MESH_FILLED_KIND_SOURCE(quadrangleMesh, PbQuadrangleMesh2D)
PO_MESH_FILLED_KIND_SOURCE(triangleMesh, PbTriangleMesh2D)

// ------------------------------------------------------------- the kit

PoMeshFilled::PoMeshFilled() {
    SO_KIT_CONSTRUCTOR(PoMeshFilled);
    SO_KIT_ADD_FIELD(useOverallNormal, (FALSE));
    SO_KIT_ADD_CATALOG_ENTRY(groupFilled, SoGroup, TRUE, alternateRep, \x0, TRUE);
    SO_KIT_INIT_INSTANCE();
    watchFields({&useOverallNormal});
}

PoMeshFilled::~PoMeshFilled() = default;

int PoMeshFilled::getNumContouringFaces(void) const {
    return m_contouring ? m_contouring->getNumFaces() : 0;
}

void PoMeshFilled::rebuild(void) {
    RebuildScope scope(this);
    const PbMesh2D* mesh = getCurrentMesh2D();
    if (!mesh || mesh->isEmpty()) {
        setPart("appearance.texture2", nullptr);
        setPart("appearance.material", nullptr);
        setPart("groupFilled", nullptr);
        return;
    }
    auto* group = new SoSeparator;
    setGroup(group);
    clearTekNodes();
    // Values per cell colour nothing here; known before the shape hints,
    // which depend on the shape.
    const int setIndex = valuesIndex.getValue();
    if (setIndex >= 0 && getEffectiveColoring() != COLOR_INHERITED &&
        mesh->getValuesBinding(setIndex) == PbMesh::PER_CELL)
        setEffectiveColoring(COLOR_INHERITED);
    addOverallNormal(*mesh);
    insertDefaultShapeHints();
    mesh->meshFilled(this);
    setPart("appearance.texture2", m_texture);
    setPart("appearance.material", getMaterial());
    setPart("groupFilled", group);
    deleteTransparencyParts(getCurrentDataMapping(), getMaterial(), m_materialBinding, group);
}

void PoMeshFilled::addOverallNormal(const PbMesh2D& mesh) {
    m_overallNormal = nullptr;
    if (!useOverallNormal.getValue() || zValuesIndex.getValue() != -1 || mesh.getZcoord())
        return;
    auto* binding = new SoNormalBinding;
    binding->value = SoNormalBinding::OVERALL;
    m_overallNormal = new SoNormal;
    m_overallNormal->vector.setValue(mesh.getFirstCellNormal());
    getGroup()->addChild(binding);
    getGroup()->addChild(m_overallNormal);
}

// Counter-clockwise when the overall normal points up, else clockwise.
// Without an overall normal a quad mesh takes the winding of the grid's
// first cell: the toolkit lights a quad mesh only on the side that the
// ordering makes its front, where the other shapes are lit on both sides.
void PoMeshFilled::insertDefaultShapeHints(void) {
    auto* hints = new SoShapeHints;
    const SbVec3f up(0.0f, 0.0f, 1.0f);
    const PbMesh2D* mesh = getCurrentMesh2D();
    const bool quadMesh =
        dynamic_cast<const PbGrid2D*>(mesh) && getEffectiveColoring() != COLOR_CONTOURING;
    bool counterClockwise = false;
    if (m_overallNormal)
        counterClockwise = m_overallNormal->vector[0].dot(up) > 0.0f;
    else if (quadMesh)
        counterClockwise = mesh->getFirstCellNormal().dot(up) > 0.0f;
    hints->vertexOrdering =
        counterClockwise ? SoShapeHints::COUNTERCLOCKWISE : SoShapeHints::CLOCKWISE;
    hints->creaseAngle = creaseAngle.getValue();
    getGroup()->addChild(hints);
}

void PoMeshFilled::setDefaultOnNonWritingFields(void) {
    PoMesh2D::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() == FOLD_NODE_WRITE_FORMAT)
        groupFilled.setDefault(TRUE);
}

// The node values and z values of the kind's mesh.
void PoMeshFilled::readNodeValues(const PbMesh2D& mesh) {
    const int setIndex = valuesIndex.getValue();
    m_values = setIndex >= 0 ? mesh.getValuesSet(setIndex) : nullptr;
    const int zIndex = zValuesIndex.getValue();
    const bool zFromSet =
        zIndex >= 0 && mesh.getValuesSet(zIndex) && isValuesSetComplete(mesh, zIndex);
    m_zSetIndex = zFromSet ? zIndex : -1;
    m_z = zFromSet ? mesh.getValuesSet(zIndex) : mesh.getZcoord();
}

template <typename Mesh>
void PoMeshFilled::fillKind(const Mesh& mesh, const KindColorings<Mesh>& colorings) {
    readNodeValues(mesh);
    m_materialBinding = nullptr;
    m_texture = nullptr;
    m_textureCoordinates = nullptr;
    (this->*colorings.colorings[getEffectiveColoring()])(&mesh);
}

void PoMeshFilled::addMaterialBinding(int binding) {
    m_materialBinding = new SoMaterialBinding;
    m_materialBinding->value = binding;
    getGroup()->addChild(m_materialBinding);
}

// ----------------------------------------------------------- colourings

template <typename Mesh> void PoMeshFilled::filledInherited(const Mesh& mesh) {
    getGroup()->addChild(makeSoCoordinate3(m_zSetIndex));
    getGroup()->addChild(makeShape(mesh));
}

template <typename Mesh> void PoMeshFilled::filledAverage(const Mesh& mesh) {
    addMaterialBinding(perCellBinding(mesh));
    filledInherited(mesh);
    std::vector<float> cellValues;
    cellValues.reserve(mesh.getNumCells());
    forEachCell(mesh, [&](const int* nodes, int count) {
        cellValues.push_back(averageCellValue(m_values, nodes, count));
    });
    mapColor(static_cast<int>(cellValues.size()), cellValues.data(), TRUE);
}

template <typename Mesh> void PoMeshFilled::filledMapping(const Mesh& mesh) {
    addMaterialBinding(SoMaterialBinding::PER_VERTEX_INDEXED);
    filledInherited(mesh);
    mapColor(mesh.getNumNodes(), m_values, TRUE);
}

template <typename Mesh> void PoMeshFilled::filledContouring(const Mesh& mesh) {
    if (!m_values) {
        filledInherited(mesh);
        return;
    }
    if (!m_contouring)
        m_contouring = std::make_unique<PiContouringFilled>();
    mesh.meshContouring(m_contouring.get(), m_z);
    m_materialBinding = new SoMaterialBinding;
    newMaterial();
    m_contouring->setDataMapping(getCurrentDataMapping());
    m_contouring->setIsovaluesList(getCurrentIsovaluesList());
    m_contouring->fillSurf(m_values, m_z, getGroup(), getMaterial(), m_materialBinding);
}

template <typename Mesh> void PoMeshFilled::filledTextureContouring(const Mesh& mesh) {
    m_texture = getTextureContouring() ? getTextureContouring()->getTexture() : nullptr;
    if (m_values) {
        auto* binding = new SoTextureCoordinateBinding;
        binding->value = SoTextureCoordinateBinding::PER_VERTEX_INDEXED;
        getGroup()->addChild(binding);
    }
    m_textureCoordinates = new SoTextureCoordinate2;
    getGroup()->addChild(m_textureCoordinates);
    filledInherited(mesh);
    if (!m_values || !getTextureContouring())
        return;
    const int numNodes = mesh.getNumNodes();
    m_textureCoordinates->point.setNum(numNodes);
    getTextureContouring()->getTextureCoords(numNodes, m_values,
                                             m_textureCoordinates->point.startEditing());
    m_textureCoordinates->point.finishEditing();
}
