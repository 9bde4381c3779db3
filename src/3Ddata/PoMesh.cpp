#include <Quillon/3Ddata/PoMesh.h>

#include <Quillon/3Ddata/PbMesh1D.h>
#include <Quillon/3Ddata/PbMesh2D.h>
#include <Quillon/3Ddata/PbMesh3D.h>
#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PbIsovaluesList.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/nodes/PoCellFilterElement.h>
#include <Quillon/nodes/PoDataMapping.h>
#include <Quillon/nodes/PoDataMappingElement.h>
#include <Quillon/nodes/PoIsovaluesListElement.h>
#include <Quillon/nodes/PoMeshElement.h>

#include "3Ddata/PiTextureContouring.h"
#include "3Ddata/PiVolumwright.h"
#include "platform/SoPreferences.h"

#include <Inventor/misc/SoNormalGenerator.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoComplexity.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedShape.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoNormal.h>
#include <Inventor/nodes/SoNormalBinding.h>
#include <Inventor/nodes/SoShapeHints.h>

#include <cmath>

PO_KIT_ABSTRACT_SOURCE(PoMesh, PoVolumwright)

namespace {
// The class-wide buffers start with room for this many entries.
const size_t s_initialScratch = 500;

template <typename T> std::vector<T> reserved(size_t capacity) {
    std::vector<T> buffer;
    buffer.reserve(capacity);
    return buffer;
}

// Whether a list makes colour bands: two isovalues at least.
bool hasBands(const PbIsovaluesList* list) {
    int count = 0, regular;
    float min, max, step;
    return list && list->getIsoList(count, min, max, step, regular) && count >= 2;
}
} // namespace

std::vector<SbVec3f> PoMesh::m_points = reserved<SbVec3f>(s_initialScratch);
std::vector<float> PoMesh::m_pointValues = reserved<float>(s_initialScratch);

PoMesh::PoMesh() : m_isovalueAdjustment(std::make_unique<PiVolumwright>()) {
    SO_KIT_CONSTRUCTOR(PoMesh);
    SO_KIT_ADD_FIELD(valuesIndex, (-1));
    SO_KIT_ADD_FIELD(valuesIndexForCellFilter, (-1));
    SO_KIT_ADD_FIELD(vecsIndex, (-1));
    SO_KIT_ADD_FIELD(coloringType, (COLOR_INHERITED));
    SO_KIT_ADD_FIELD(smoothTextureContouring, (FALSE));
    SO_KIT_ADD_FIELD(creaseAngle, (SoPreferences::getFloat("TEK_3DDATA_CREASE_ANGLE", 0.0f)));
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_INHERITED);
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_AVERAGE);
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_MAPPING);
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_CONTOURING);
    SO_KIT_DEFINE_ENUM_VALUE(ColoringType, COLOR_TEXTURE_CONTOURING);
    SO_KIT_SET_SF_ENUM_TYPE(coloringType, ColoringType);
    SO_KIT_INIT_INSTANCE();
    m_fields = watchFields({&valuesIndex, &valuesIndexForCellFilter, &vecsIndex, &coloringType,
                            &smoothTextureContouring, &creaseAngle});
}

PoMesh::~PoMesh() {
    changeConnection(m_mesh, nullptr);
    changeConnection(m_dataMapping, nullptr);
    changeConnection(m_moduleDataMapping, nullptr);
    changeConnection(m_isovaluesList, nullptr);
}

// ------------------------------------------------------- connected objects

template <typename T> void PoMesh::connectObject(T*& member, T* object) {
    changeConnection(member, object);
    touchKit();
    member = object;
}

void PoMesh::setMeshObject(PbMesh* mesh) {
    connectObject(m_mesh, mesh);
}

void PoMesh::setDataMapping(PbDataMapping* mapping) {
    connectObject(m_dataMapping, mapping);
}

void PoMesh::setModuleDataMapping(PbDataMapping* mapping) {
    connectObject(m_moduleDataMapping, mapping);
}

void PoMesh::setIsovaluesList(PbIsovaluesList* list) {
    connectObject(m_isovaluesList, list);
}

// The base takes a mesh of any dimension.
const PbMesh* PoMesh::readStateMesh(void) {
    switch (readElement<PoMeshElement>(&PoMeshElement::getDimension)) {
    case 1:
        return readElement<PoMeshElement>(&PoMeshElement::getMesh1D);
    case 2:
        return readElement<PoMeshElement>(&PoMeshElement::getMesh2D);
    case 3:
        return readElement<PoMeshElement>(&PoMeshElement::getMesh3D);
    default:
        return nullptr;
    }
}

const PbMesh* PoMesh::getMesh(void) {
    return m_mesh ? m_mesh : readStateMesh();
}

const PbDataMapping* PoMesh::getDataMapping(void) {
    return m_dataMapping ? m_dataMapping : readElement<PoDataMappingElement>();
}

const PbDataMapping* PoMesh::getModuleDataMapping(void) {
    if (m_moduleDataMapping)
        return m_moduleDataMapping;
    SoNode* node = moduleDataMappingNode.getValue();
    if (node && node->isOfType(PoDataMapping::getClassTypeId()))
        return static_cast<PoDataMapping*>(node)->getDataMapping();
    return readElement<PoDataMappingElement>();
}

const PbIsovaluesList* PoMesh::getIsovaluesList(void) {
    return m_isovaluesList ? m_isovaluesList : readElement<PoIsovaluesListElement>();
}

const PoCellFilter* PoMesh::getCellFilter(void) {
    return readElement<PoCellFilterElement>();
}

void PoMesh::basicObjectChange(PbBase* object) {
    PoVolumwright::basicObjectChange(object);
    manageConnectedObject(object, m_mesh);
    manageConnectedObject(object, m_dataMapping);
    manageConnectedObject(object, m_moduleDataMapping);
    manageConnectedObject(object, m_isovaluesList);
}

// ---------------------------------------------------------------- rebuild

const PbDataMapping* PoMesh::addDataMappingInCache(void) {
    return coloringType.getValue() != COLOR_INHERITED ? getDataMapping() : m_dataMapping;
}

const PbIsovaluesList* PoMesh::addIsovaluesListInCache(bool force) {
    const int coloring = coloringType.getValue();
    if (force || coloring == COLOR_CONTOURING || coloring == COLOR_TEXTURE_CONTOURING)
        return getIsovaluesList();
    return m_isovaluesList;
}

void PoMesh::preRebuild(void) {
    PoVolumwright::preRebuild();
    m_currentMesh = getMesh();
    m_currentDataMapping = addDataMappingInCache();
    const bool ownModuleMapping = m_moduleDataMapping || moduleDataMappingNode.getValue();
    m_currentModuleDataMapping = ownModuleMapping ? getModuleDataMapping() : m_currentDataMapping;
    m_currentIsovaluesList = addIsovaluesListInCache();
    settleColoring();
}

void PoMesh::settleColoring(void) {
    m_coloring = static_cast<ColoringType>(coloringType.getValue());
    if ((m_coloring == COLOR_CONTOURING || m_coloring == COLOR_TEXTURE_CONTOURING) &&
        !hasBands(m_currentIsovaluesList)) {
        if (m_currentIsovaluesList)
            PoDebugError::postWarning("PoMesh::preRebuild",
                                      "colour bands need two isovalues at least; the values are "
                                      "coloured by the data mapping");
        m_coloring = COLOR_MAPPING;
    }
    if (m_coloring == COLOR_TEXTURE_CONTOURING)
        prepareTextureContouring();
    else
        setComplexity(0.5f);
    const int setIndex = valuesIndex.getValue();
    if (!m_currentDataMapping ||
        (m_currentMesh && (setIndex < 0 || !m_currentMesh->getValuesSet(setIndex) ||
                           !isValuesSetComplete(*m_currentMesh, setIndex))))
        m_coloring = COLOR_INHERITED;
}

bool PoMesh::isValuesSetComplete(const PbMesh& mesh, int setIndex) const {
    const bool perNode = mesh.getValuesBinding(setIndex) == PbMesh::PER_NODE;
    const int needed = perNode ? mesh.getNumNodes() : mesh.getNumCells();
    const int size = mesh.getValuesSetSize(setIndex);
    if (size >= needed)
        return true;
    PoDebugError::post("PoMesh::preRebuild", "value set %d holds %d values for %d %s", setIndex,
                       size, needed, perNode ? "nodes" : "cells");
    return false;
}

void PoMesh::prepareTextureContouring(void) {
    const bool smooth = smoothTextureContouring.getValue();
    setComplexity(smooth ? 1.0f : 0.1f);
    if (!m_textureContouring)
        m_textureContouring = std::make_unique<PiTextureContouring>();
    m_textureContouring->setDataMapping(m_currentDataMapping);
    m_textureContouring->setSmoothContouring(smooth);
    m_textureContouring->setIsovaluesList(m_currentIsovaluesList);
    m_textureContouring->buildTexture();
}

void PoMesh::setComplexity(float textureQuality) {
    auto* complexity = new SoComplexity;
    complexity->textureQuality = textureQuality;
    setPart("appearance.complexity", complexity);
}

void PoMesh::postRebuild(void) {
    PoVolumwright::postRebuild();
    if (m_coloring == COLOR_TEXTURE_CONTOURING && !getPart("appearance.material", FALSE)) {
        auto* white = new SoMaterial;
        white->diffuseColor.setValue(1.0f, 1.0f, 1.0f);
        setPart("appearance.material", white);
    }
    m_previousColoring = m_coloring;
}

// A representation written with the kit carries the kit's look: the
// fields are left out.  Otherwise the material that the kit computes is.
void PoMesh::setDefaultOnNonWritingFields(void) {
    PoVolumwright::setDefaultOnNonWritingFields();
    if (getNodeWriteFormat() == UNFOLD_NODE_WRITE_FORMAT) {
        setListFieldsDefault(m_fields);
        return;
    }
    auto* appearanceKit = static_cast<SoAppearanceKit*>(getPart("appearance", FALSE));
    if (appearanceKit && appearanceKit->getPart("material", FALSE))
        appearanceKit->getField("material")->setDefault(TRUE);
}

// ------------------------------------------------------------- colouring

void PoMesh::mapColor(int count, const float* values, int newMaterial) {
    if (!values) {
        values = m_pointValues.data();
        count = static_cast<int>(m_pointValues.size());
    }
    if (count <= 0 || !values || !m_currentDataMapping)
        return;
    if (newMaterial || !m_material)
        PoMesh::newMaterial();
    const bool withTransparency = m_currentDataMapping->isTransparencyEnabled();
    m_material->diffuseColor.setNum(count);
    SbColor* colors = m_material->diffuseColor.startEditing();
    float* transparencies = nullptr;
    if (withTransparency) {
        m_material->transparency.setNum(count);
        transparencies = m_material->transparency.startEditing();
    }
    for (int i = 0; i < count; ++i) {
        float transparency = 0.0f;
        if (!std::isfinite(values[i]) ||
            !m_currentDataMapping->getRGBColor(values[i], colors[i], transparency)) {
            colors[i].setValue(0.0f, 0.0f, 0.0f);
            transparency = 1.0f;
        }
        if (transparencies)
            transparencies[i] = transparency;
    }
    m_material->diffuseColor.finishEditing();
    if (transparencies)
        m_material->transparency.finishEditing();
}

float PoMesh::averageCellValue(const float* values, const int* nodes, int numNodes) const {
    int minEnabled = 0, maxEnabled = 0;
    float minValue = 0.0f, maxValue = 0.0f;
    if (m_currentDataMapping) {
        m_currentDataMapping->thresholdsEnabled(minEnabled, maxEnabled);
        m_currentDataMapping->getMinRGBThreshold(minValue);
        m_currentDataMapping->getMaxRGBThreshold(maxValue);
    }
    auto anyNode = [&](auto reaches) {
        for (int k = 0; k < numNodes; ++k)
            if (reaches(values[nodes[k]]))
                return true;
        return false;
    };
    if (maxEnabled && anyNode([&](float v) { return v >= maxValue; }))
        return maxValue;
    if (minEnabled && anyNode([&](float v) { return v <= minValue; }))
        return minValue;
    double sum = 0.0;
    for (int k = 0; k < numNodes; ++k)
        sum += values[nodes[k]];
    return numNodes > 0 ? static_cast<float>(sum / numNodes) : 0.0f;
}

SoMaterial* PoMesh::newMaterial(void) {
    m_material = new SoMaterial;
    return m_material;
}

void PoMesh::computeNormal(SoIndexedShape* shape, const SoCoordinate3* coordinates) {
    if (!shape || !coordinates || !m_group)
        return;
    const int32_t* index = shape->coordIndex.getValues(0);
    const int numIndices = shape->coordIndex.getNum();
    const SbVec3f* points = coordinates->point.getValues(0);
    const int numPoints = coordinates->point.getNum();
    SoNormalGenerator generator(FALSE, numIndices);
    bool open = false;
    for (int i = 0; i < numIndices; ++i) {
        if (index[i] < 0 || index[i] >= numPoints) {
            if (open)
                generator.endPolygon();
            open = false;
            continue;
        }
        if (!open)
            generator.beginPolygon();
        open = true;
        generator.polygonVertex(points[index[i]]);
    }
    if (open)
        generator.endPolygon();
    generator.generate(creaseAngle.getValue());

    // One normal per polygon vertex, in the order of the coordinate index.
    auto* normals = new SoNormal;
    normals->vector.setValues(0, generator.getNumNormals(), generator.getNormals());
    shape->normalIndex.setNum(numIndices);
    int32_t* normalIndex = shape->normalIndex.startEditing();
    for (int i = 0, next = 0; i < numIndices; ++i)
        normalIndex[i] = index[i] < 0 || index[i] >= numPoints ? -1 : next++;
    shape->normalIndex.finishEditing();
    auto* binding = new SoNormalBinding;
    binding->value = SoNormalBinding::PER_VERTEX_INDEXED;
    const int at = m_group->findChild(shape);
    m_group->insertChild(binding, at < 0 ? m_group->getNumChildren() : at);
    m_group->insertChild(normals, at < 0 ? m_group->getNumChildren() : at);
}

void PoMesh::insertDefaultShapeHints(void) {
    m_shapeHints = new SoShapeHints;
    m_shapeHints->vertexOrdering = SoShapeHints::CLOCKWISE;
    m_shapeHints->creaseAngle = creaseAngle.getValue();
    if (m_group)
        m_group->addChild(m_shapeHints);
}

void PoMesh::clearTekNodes(void) {
    m_material = nullptr;
    m_shapeHints = nullptr;
    m_coordinates = nullptr;
}

// ------------------------------------------------------- lists and arrays

SbVec3f* PoMesh::newSbVec3f(int n) {
    if (static_cast<int>(m_vertices.size()) < n)
        m_vertices = std::vector<SbVec3f>(static_cast<size_t>(n));
    return m_vertices.data();
}

void PoMesh::update_coord_index(SoIndexedShape* shape) {
    const int count = static_cast<int>(m_coordIndex.size());
    shape->coordIndex.setNum(count);
    if (count > 0)
        shape->coordIndex.setValues(0, count, m_coordIndex.data());
}

// ------------------------------------------------------ isovalue adjustment

void PoMesh::adjustIsoval(int n, const float* values, float& iso) {
    m_isovalueAdjustment->adjustIsoval(n, values, iso);
}

void PoMesh::adjustIsovalMultiple(int n1, const float* values1, int n2, const float* values2,
                                  int n3, const float* values3, float& iso) {
    m_isovalueAdjustment->adjustIsovalMultiple(n1, values1, n2, values2, n3, values3, iso);
}

void PoMesh::adjustIsovalList(int n1, const float* values1, int n2, const float* values2, int n3,
                              const float* values3) {
    m_isovalueAdjustment->setIsovaluesList(m_currentIsovaluesList);
    m_isovalueAdjustment->adjustIsovalList(n1, values1, n2, values2, n3, values3);
}

bool PoMesh::isIsovalAdjusted(void) const {
    return m_isovalueAdjustment->isIsovalAdjusted();
}

const float* PoMesh::getAdjustedIsovalues(int& count) const {
    return m_isovalueAdjustment->getAdjustedIsovalues(count);
}

// ------------------------------------------------------------------ memory

size_t PoMesh::getMemorySize(void) const {
    int numAdjusted = 0;
    getAdjustedIsovalues(numAdjusted);
    return sizeof(*this) + m_coordIndex.capacity() * sizeof(int32_t) +
           m_cellIndex.capacity() * sizeof(int32_t) + m_vertices.capacity() * sizeof(SbVec3f) +
           static_cast<size_t>(numAdjusted) * sizeof(float);
}

size_t PoMesh::getClassMemorySize(void) {
    return m_points.capacity() * sizeof(SbVec3f) + m_pointValues.capacity() * sizeof(float);
}
