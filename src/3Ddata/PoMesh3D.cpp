#include <Quillon/3Ddata/PoMesh3D.h>

#include <Quillon/3Ddata/PbGrid3D.h>
#include <Quillon/3Ddata/PbMesh3D.h>
#include <Quillon/3Ddata/PbTriangleMesh2D.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoCellFilter.h>
#include <Quillon/nodes/PoMeshElement.h>

#include "3Ddata/PiContouringFilled.h"
#include "3Ddata/PiCrossContour.h"
#include "3Ddata/PiLevelSurface.h"
#include "3Ddata/PiTextureContouring.h"
#include "platform/SoPreferences.h"

#include <Inventor/SbPlane.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureCoordinateBinding.h>

#include <cfloat>
#include <cmath>

PO_KIT_ABSTRACT_SOURCE(PoMesh3D, PoMesh)

namespace {

// Calls fn(points, count) for every run of a coordinate index between -1s.
template <class Fn> void forEachRun(const std::vector<int32_t>& coordIndex, Fn fn) {
    size_t start = 0;
    for (size_t i = 0; i < coordIndex.size(); ++i)
        if (coordIndex[i] < 0) {
            fn(coordIndex.data() + start, static_cast<int>(i - start));
            start = i + 1;
        }
}

// The triangles of strips (every other one turned, as strips draw them) or
// of faces (fans), three point indices each.
std::vector<int> trianglesOf(const std::vector<int32_t>& coordIndex, bool strips) {
    std::vector<int> triangles;
    forEachRun(coordIndex, [&](const int32_t* run, int count) {
        for (int k = 0; k + 2 < count; ++k) {
            int a = strips ? run[k] : run[0], b = run[k + 1], c = run[k + 2];
            if (strips && k % 2)
                std::swap(a, b);
            triangles.insert(triangles.end(), {a, b, c});
        }
    });
    return triangles;
}

} // namespace

PoMesh3D::PoMesh3D() : m_levelSurface(std::make_unique<PiLevelSurface>()), m_lastLevel(FLT_MAX) {
    SO_KIT_CONSTRUCTOR(PoMesh3D);
    SO_KIT_INIT_INSTANCE();
}

PoMesh3D::~PoMesh3D() = default;

void PoMesh3D::setMesh(PbMesh3D* mesh) {
    setMeshObject(mesh);
}

const PbMesh3D* PoMesh3D::getMesh(void) {
    return static_cast<const PbMesh3D*>(PoMesh::getMesh());
}

const PbMesh* PoMesh3D::readStateMesh(void) {
    return readElement<PoMeshElement>(&PoMeshElement::getMesh3D);
}

void PoMesh3D::preRebuild(void) {
    PoMesh::preRebuild();
    m_currentMesh3D = static_cast<const PbMesh3D*>(getCurrentMesh());
}

// ------------------------------------------------------- rebuild bracket

const PbMesh3D* PoMesh3D::startRepresentation(const char* groupPart, const SbPlane* plane,
                                              const char* methodName) {
    const PbMesh3D* mesh = m_currentMesh3D;
    m_texture = nullptr;
    m_materialBinding = nullptr;
    clearTekNodes();
    if (mesh && mesh->isEmpty())
        mesh = nullptr;
    if (mesh && plane && !hasPlaneNormal(*plane)) {
        PoDebugError::post(methodName, "the plane has no normal");
        mesh = nullptr;
    }
    setGroup(mesh ? new SoGroup : nullptr);
    if (!mesh) {
        setPart("appearance.texture2", nullptr);
        setPart("appearance.material", nullptr);
        setPart(groupPart, nullptr);
    }
    return mesh;
}

void PoMesh3D::finishRepresentation(const char* groupPart) {
    setPart("appearance.texture2", m_texture);
    setPart("appearance.material", getMaterial());
    setPart(groupPart, getGroup());
    deleteTransparencyParts(getCurrentDataMapping(), getMaterial(), m_materialBinding, getGroup());
}

// ------------------------------------------------------- isosurface queries

const float* PoMesh3D::getIsosurfDataSet(void) {
    return nullptr;
}

float PoMesh3D::getIsosurfValue(void) {
    return 0.0f;
}

int PoMesh3D::getSurfOrientation(void) {
    return 1;
}

unsigned int PoMesh3D::getIsosurfDataSetId(void) {
    return 0;
}

int PoMesh3D::getIsosurfDataSetIndex(void) {
    return -1;
}

bool PoMesh3D::getIsosurfAxisTerms(const float* [3]) {
    return false;
}

// ------------------------------------------------------------ level surface

void PoMesh3D::meshLevelSurf(const PbMesh3D* mesh) {
    bool strips = SoPreferences::getBool("TEK_3DDATA_USE_TRIANGLE_STRIP_SET", true);
    const float* dataSet = getIsosurfDataSet();
    float level = getIsosurfValue();
    m_strips = strips;
    if (!mesh || !updateLevelSurfTopology(dataSet, level))
        return;
    drawEdgeSurface(*mesh, m_levelSurface->getPoints(), m_levelSurface->getCoordIndex(), strips);
}

bool PoMesh3D::TopologyKey::operator==(const TopologyKey& other) const {
    return topologyId == other.topologyId && dataSetIndex == other.dataSetIndex &&
           dataSetId == other.dataSetId && filterNodeId == other.filterNodeId &&
           filterDataSetId == other.filterDataSetId && orientation == other.orientation &&
           strips == other.strips;
}

PoMesh3D::TopologyKey PoMesh3D::currentTopologyKey(const PoCellFilter* filter, bool strips) {
    TopologyKey key;
    key.topologyId = m_currentMesh3D->getTopologyId();
    key.dataSetIndex = getIsosurfDataSetIndex();
    key.dataSetId = getIsosurfDataSetId();
    key.filterNodeId = filter ? filter->getNodeId() : 0;
    int filterSet = valuesIndexForCellFilter.getValue();
    key.filterDataSetId =
        filter && filterSet >= 0 ? m_currentMesh3D->getFltDataSetId(filterSet) : 0;
    key.orientation = getSurfOrientation();
    key.strips = strips;
    return key;
}

void PoMesh3D::clearIsoCells(void) {
    m_hasTopology = false;
}

const float* PoMesh3D::boundValuesSet(int setIndex, PbMesh::DataBinding binding,
                                      const char* methodName, const char* need) {
    const PbMesh3D* mesh = m_currentMesh3D;
    if (!mesh || setIndex < 0 || !mesh->getValuesSet(setIndex))
        return nullptr;
    if (mesh->getValuesBinding(setIndex) != binding) {
        PoDebugError::post(methodName, "value set %d is bound per %s: %s", setIndex,
                           binding == PbMesh::PER_NODE ? "cell" : "node", need);
        return nullptr;
    }
    return isValuesSetComplete(*mesh, setIndex) ? mesh->getValuesSet(setIndex) : nullptr;
}

const float* PoMesh3D::filterCellValues(const PoCellFilter* filter) {
    return filter ? boundValuesSet(valuesIndexForCellFilter.getValue(), PbMesh::PER_CELL,
                                   "PoMesh3D::filterCellValues",
                                   "the cell filter needs a value per cell")
                  : nullptr;
}

bool PoMesh3D::updateLevelSurfTopology(const float* dataSet, float level) {
    const PoCellFilter* filter = getCellFilter();
    TopologyKey key = currentTopologyKey(filter, m_strips);
    if (m_hasTopology && key == m_topologyKey && level == m_lastLevel)
        return true;
    clearIsoCells();
    ++m_numLevelSurfCuts;
    if (!cutLevelSurface(dataSet, level, filter))
        return false;
    m_topologyKey = key;
    m_lastLevel = level;
    m_hasTopology = true;
    return true;
}

// Cuts the surface of the level, moved off the node values first when some
// of them equal it.
bool PoMesh3D::cutLevelSurface(const float* dataSet, float level, const PoCellFilter* filter) {
    const PbMesh3D& mesh = *m_currentMesh3D;
    PiLevelSurface::Request request;
    request.mesh = &mesh;
    request.field.values = dataSet;
    if (!dataSet && !getIsosurfAxisTerms(request.field.axisTerms))
        return false;
    request.level = level;
    request.towardsHigher = getSurfOrientation() == 0;
    request.style = m_strips ? PiLevelSurface::STRIPS : PiLevelSurface::FACES;
    request.filter = filter;
    request.filterValues = filterCellValues(filter);
    if (m_levelSurface->build(request) == PiLevelSurface::LEVEL_ON_NODE) {
        std::vector<float> sums;
        const float* values = dataSet;
        if (!values) {
            sums.resize(mesh.getNumNodes());
            PiLevelSurface::sumAxisTerms(static_cast<const PbGrid3D&>(mesh),
                                         request.field.axisTerms, sums.data());
            values = sums.data();
        }
        adjustIsoval(mesh.getNumNodes(), values, request.level);
        request.levelMayTouchNodes = true;
        m_levelSurface->build(request);
    }
    if (m_levelSurface->hasSkippedNaN())
        PoDebugError::postWarning("PoMesh3D::updateLevelSurfTopology",
                                  "value set %d holds NaN values: the cells around them are "
                                  "left out of the surface",
                                  getIsosurfDataSetIndex());
    return true;
}

// ---------------------------------------------------------- drawing faces

void PoMesh3D::drawEdgeSurface(const PbMesh3D& mesh, const PiEdgePoints& points,
                               const std::vector<int32_t>& coordIndex, bool strips) {
    m_drawnMesh = &mesh;
    m_drawnPoints = &points;
    m_drawnIndex = &coordIndex;
    m_strips = strips;
    if (!colorValuesAt(points, m_drawnValues))
        setEffectiveColoring(COLOR_INHERITED);
    if (getEffectiveColoring() == COLOR_CONTOURING) {
        updateLevelSurfContouring();
        return;
    }
    updateSurfaceShapeBindings(strips);
    updateLevelSurfCoord();
    m_shape->coordIndex.setNum(static_cast<int>(coordIndex.size()));
    m_shape->coordIndex.setValues(0, static_cast<int>(coordIndex.size()), coordIndex.data());
    getGroup()->addChild(m_shape);
    updateLevelSurfColors();
    updateLevelSurfTextures();
}

// The bindings that the colouring needs, and the shape, which goes after
// the coordinates.
void PoMesh3D::updateSurfaceShapeBindings(bool strips) {
    m_materialBinding = nullptr;
    m_texture = nullptr;
    ColoringType coloring = getEffectiveColoring();
    if (coloring == COLOR_MAPPING || coloring == COLOR_AVERAGE) {
        m_materialBinding = new SoMaterialBinding;
        m_materialBinding->value = coloring == COLOR_MAPPING ? SoMaterialBinding::PER_VERTEX_INDEXED
                                                             : SoMaterialBinding::PER_FACE;
        getGroup()->addChild(m_materialBinding);
    }
    if (coloring == COLOR_TEXTURE_CONTOURING) {
        auto* binding = new SoTextureCoordinateBinding;
        binding->value = SoTextureCoordinateBinding::PER_VERTEX_INDEXED;
        getGroup()->addChild(binding);
    }
    if (strips)
        m_shape = new SoIndexedTriangleStripSet;
    else
        m_shape = new SoIndexedFaceSet;
}

void PoMesh3D::addCoordinates(const PbMesh3D& mesh, const PiEdgePoints& points) {
    auto* coordinates = new SoCoordinate3;
    coordinates->point.setNum(points.getNum());
    points.computeCoords(mesh, coordinates->point.startEditing());
    coordinates->point.finishEditing();
    setTekCoordinates(coordinates);
    getGroup()->addChild(coordinates);
}

void PoMesh3D::updateLevelSurfCoord(void) {
    addCoordinates(*m_drawnMesh, *m_drawnPoints);
}

bool PoMesh3D::colorValuesAt(const PiEdgePoints& points, std::vector<float>& values) {
    int setIndex = valuesIndex.getValue();
    const float* nodeValues =
        getEffectiveColoring() != COLOR_INHERITED && m_currentMesh3D && setIndex >= 0
            ? m_currentMesh3D->getValuesSet(setIndex)
            : nullptr;
    if (!nodeValues || m_currentMesh3D->getValuesBinding(setIndex) != PbMesh::PER_NODE)
        return false;
    values.resize(points.getNum());
    points.computeValues(nodeValues, values.data());
    return true;
}

// Mapping: one colour per point.  Average: one per face (per triangle of a
// strip), from its points' values.
void PoMesh3D::updateLevelSurfColors(void) {
    if (getEffectiveColoring() == COLOR_MAPPING) {
        mapColor(static_cast<int>(m_drawnValues.size()), m_drawnValues.data(), TRUE);
        return;
    }
    if (getEffectiveColoring() != COLOR_AVERAGE)
        return;
    std::vector<float> faceValues;
    auto addFace = [&](const int* points, int count) {
        faceValues.push_back(averageCellValue(m_drawnValues.data(), points, count));
    };
    if (m_strips) {
        std::vector<int> triangles = trianglesOf(*m_drawnIndex, true);
        for (size_t t = 0; t < triangles.size(); t += 3)
            addFace(&triangles[t], 3);
    } else {
        forEachRun(*m_drawnIndex, addFace);
    }
    mapColor(static_cast<int>(faceValues.size()), faceValues.data(), TRUE);
}

// The texture coordinates go before the coordinates in the group.
void PoMesh3D::updateLevelSurfTextures(void) {
    PiTextureContouring* texture = getTextureContouring();
    if (getEffectiveColoring() != COLOR_TEXTURE_CONTOURING || !texture)
        return;
    m_texture = texture->getTexture();
    auto* coordinates = new SoTextureCoordinate2;
    int count = static_cast<int>(m_drawnValues.size());
    coordinates->point.setNum(count);
    texture->getTextureCoords(count, m_drawnValues.data(), coordinates->point.startEditing());
    coordinates->point.finishEditing();
    getGroup()->insertChild(coordinates, getGroup()->findChild(getTekCoordinates()));
}

// Colour bands as the filled representation draws them: the surface's
// triangles, laid out as a triangle mesh whose nodes are the surface's
// points (x and y as they are, z apart), cut along the isovalues.
void PoMesh3D::updateLevelSurfContouring(void) {
    int numPoints = m_drawnPoints->getNum();
    std::vector<SbVec3f> coords(numPoints);
    m_drawnPoints->computeCoords(*m_drawnMesh, coords.data());
    std::vector<float> x(numPoints), y(numPoints), z(numPoints);
    for (int p = 0; p < numPoints; ++p) {
        x[p] = coords[p][0];
        y[p] = coords[p][1];
        z[p] = coords[p][2];
    }
    std::vector<int> triangles = trianglesOf(*m_drawnIndex, m_strips);
    PbTriangleMesh2D surface(0);
    surface.setGeometry(numPoints, x.data(), y.data(), static_cast<int>(triangles.size() / 3),
                        triangles.data());
    PiContouringFilled contouring;
    contouring.setMesh(&surface, z.data());
    contouring.setDataMapping(getCurrentDataMapping());
    contouring.setIsovaluesList(getCurrentIsovaluesList());
    m_materialBinding = new SoMaterialBinding;
    newMaterial();
    contouring.fillSurf(m_drawnValues.data(), z.data(), getGroup(), getMaterial(),
                        m_materialBinding);
}

// --------------------------------------------------------- cross contour

bool PoMesh3D::hasPlaneNormal(const SbPlane& plane) {
    float length = plane.getNormal().length();
    return std::isfinite(length) && length > 0.5f && std::isfinite(plane.getDistanceFromOrigin());
}

void PoMesh3D::makeCrossContour(const PbMesh3D* mesh, const SbPlane& plane) {
    if (!m_crossContour)
        m_crossContour = std::make_unique<PiCrossContour>();
    m_crossContour->build(*mesh, plane);
    const PiEdgePoints& points = m_crossContour->getPoints();
    std::vector<float> values;
    bool colored = colorValuesAt(points, values);
    m_materialBinding = nullptr;
    if (colored) {
        m_materialBinding = new SoMaterialBinding;
        m_materialBinding->value = SoMaterialBinding::PER_VERTEX_INDEXED;
        getGroup()->addChild(m_materialBinding);
    }
    addCoordinates(*mesh, points);
    auto* lines = new SoIndexedLineSet;
    const std::vector<int32_t>& coordIndex = m_crossContour->getCoordIndex();
    lines->coordIndex.setNum(static_cast<int>(coordIndex.size()));
    lines->coordIndex.setValues(0, static_cast<int>(coordIndex.size()), coordIndex.data());
    getGroup()->addChild(lines);
    if (colored)
        mapColor(static_cast<int>(values.size()), values.data(), TRUE);
}

size_t PoMesh3D::getMemorySize(void) const {
    return PoMesh::getMemorySize() + m_levelSurface->getMemorySize();
}
