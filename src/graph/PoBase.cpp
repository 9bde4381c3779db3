#include <Quillon/graph/PoBase.h>

#include <Quillon/3Ddata/PbHexahedronCell.h>
#include <Quillon/3Ddata/PbPyramidCell.h>
#include <Quillon/3Ddata/PbTetrahedronCell.h>
#include <Quillon/3Ddata/PbWedgeCell.h>
#include <Quillon/3Ddata/PoVolumwright.h>
#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PoDebugError.h>
#include <Quillon/graph/PoPlotwright.h>
#include <Quillon/nodes/PoDomainElement.h>
#include <Quillon/nodes/PoMiscTextAttrElement.h>
#include <Quillon/nodes/PoNode.h>
#include <Quillon/nodes/PoSFMesh.h>

#include "3Ddata/PiContouring.h"
#include "graph/PoElementList.h"
#include "graph/PoLibQuillonP.h"
#include "nodes/PoFieldWatch.h"
#include "platform/FsInitModuleCmd.h"
#include "platform/PfToolkit.h"
#include "platform/SoFarspan.h"
#include "platform/SoLibScopel.h"

#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoToVRML2Action.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/caches/SoCache.h>
#include <Inventor/elements/SoTextOutlineEnabledElement.h>
#include <Inventor/fields/SoFieldData.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoAppearanceKit.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoIndexedTriangleStripSet.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoQuadMesh.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/sensors/SoFieldSensor.h>
#include <Inventor/threads/SbThreadAutoLock.h>

#include <algorithm>
#include <vector>

PO_KIT_ABSTRACT_SOURCE(PoBase, SoBaseKit)

PoBase::NodeWriteFormat PoBase::s_nodeWriteFormat = PoBase::FOLD_NODE_WRITE_FORMAT;
PoBase::TextType PoBase::s_textType = PoBase::SO_ANNO_TEXT3;
int PoBase::s_vrml2Mode = 0;

namespace {
int s_initCount = 0;

// Serialises every kit's rebuild in the process.
SbThreadMutex& rebuildMutex() {
    static SbThreadMutex mutex;
    return mutex;
}

// Runs a kit member with the kit's notification switched off, restoring
// the previous setting afterwards.
template <typename F> void withoutNotification(SoNode* node, F&& function) {
    const SbBool wasEnabled = node->enableNotify(FALSE);
    function();
    node->enableNotify(wasEnabled);
}
} // namespace

// ------------------------------------------------------------ start-up

namespace {
// The volume cells' marching-case tables are process-wide and built with
// the library rather than at the first isosurface.
void initMarchingCaseTables() {
    PbHexahedronCell::init();
    PbTetrahedronCell::init();
    PbPyramidCell::init();
    PbWedgeCell::init();
}

void finishMarchingCaseTables() {
    PbWedgeCell::finish();
    PbPyramidCell::finish();
    PbTetrahedronCell::finish();
    PbHexahedronCell::finish();
}
} // namespace

void PoBase::init(void) {
    PfToolkit::initDB();
    SoFarspan::init();
    PfToolkit::initNodeKit();
    if (s_initCount == 0) {
        FsInitModuleCmd::Instance()->serialize(PoQuillon::getProductName());
        PoDebugError::initClass();
        PoBase::initClass();
        PoPlotwright::initClasses();
        PoVolumwright::initClasses();
        PoElementList::initClasses();
        PoNode::initClasses();
        PoSFMesh::initClasses();
        initMarchingCaseTables();
    }
    ++s_initCount;
}

void PoBase::finish(void) {
    if (s_initCount == 0)
        return;
    if (--s_initCount == 0) {
        finishMarchingCaseTables();
        PiContouring::freeHashTableIsoEdge();
        PoSFMesh::exitClasses();
        PoNode::exitClasses();
        PoElementList::exitClasses();
        if (PoLibQuillonP::isAvailable()) {
            PoLibQuillonP::getExitClassesFunction()();
            PoLibQuillonP::finish();
        }
        PoVolumwright::exitClasses();
        PoPlotwright::exitClasses();
        PoBase::exitClass();
    }
    SoFarspan::finish();
    PfToolkit::finishNodeKit();
    PfToolkit::finishDB();
}

bool PoBase::isInitialized(void) {
    return s_initCount > 0;
}

// ------------------------------------------------------- construction

PoBase::PoBase(CatchActionCallback customCallback)
    : m_customCallback(customCallback), m_domain(&m_defaultDomain) {
    SO_KIT_CONSTRUCTOR(PoBase);
    SO_KIT_ADD_CATALOG_ENTRY(catchActionCallback, SoCallback, TRUE, this, \x0, TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(alternateRep, SoSeparator, TRUE, this, \x0, TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(catchActionLevel2Callback, SoCallback, TRUE, alternateRep, \x0, TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(appearance, SoAppearanceKit, TRUE, alternateRep, \x0, TRUE);
    SO_KIT_ADD_CATALOG_ENTRY(domainTransform, SoMatrixTransform, TRUE, alternateRep, \x0, TRUE);
    SO_KIT_INIT_INSTANCE();
    installCallbacks();
}

PoBase::~PoBase() {
    setPart("catchActionCallback", nullptr);
    setPart("catchActionLevel2Callback", nullptr);
    if (m_domain != &m_defaultDomain)
        m_domain->removeConnection(this);
    if (m_elementCache)
        m_elementCache->unref();
    if (m_domainCache)
        m_domainCache->unref();
}

void PoBase::installCallbacks(void) {
    auto* catcher = static_cast<SoCallback*>(getAnyPart("catchActionCallback", TRUE));
    catcher->setCallback(m_customCallback ? m_customCallback : &PoBase::catchActionCB, this);
    auto* level2 = static_cast<SoCallback*>(getAnyPart("catchActionLevel2Callback", TRUE));
    level2->setCallback(&PoBase::catchActionLevel2CB, nullptr);
}

// ------------------------------------------------------- field sensors

void PoBase::createFieldSensorList(int count, FieldSensorList* list) {
    if (count < 0) {
        PoDebugError::post("PoBase::createFieldSensorList", "negative number of sensors %d", count);
        return;
    }
    list->num = count;
    list->sensors = new SoFieldSensor*[count];
    for (int i = 0; i < count; ++i) {
        list->sensors[i] = new SoFieldSensor(&PoBase::fieldSensorCB, this);
        list->sensors[i]->setPriority(0);
    }
}

void PoBase::deleteFieldSensorList(FieldSensorList* list) {
    for (int i = 0; i < list->num; ++i)
        delete list->sensors[i];
    delete[] list->sensors;
    list->sensors = nullptr;
    list->num = 0;
}

void PoBase::attachFieldSensorList(FieldSensorList* list, const SoFieldList& fields) {
    if (fields.getLength() < list->num) {
        PoDebugError::post("PoBase::attachFieldSensorList", "fewer fields (%d) than sensors (%d)",
                           fields.getLength(), list->num);
        return;
    }
    for (int i = 0; i < list->num; ++i)
        list->sensors[i]->attach(fields[i]);
}

void PoBase::detachFieldSensorList(FieldSensorList* list) {
    for (int i = 0; i < list->num; ++i)
        list->sensors[i]->detach();
}

void PoBase::fieldSensorCB(void* data, SoSensor* sensor) {
    auto* kit = static_cast<PoBase*>(data);
    if (kit->m_storeFieldsChanged && sensor)
        kit->m_changedFields.append(static_cast<SoFieldSensor*>(sensor)->getAttachedField());
    kit->m_anyFieldChanged = 1;
    kit->markChanged();
}

void PoBase::markChanged(void) {
    if (m_updateMethod == UPDATE_IMMEDIATELY) {
        rebuild();
        m_modified = 0;
    } else {
        m_modified = 1;
    }
}

SbBool PoBase::isFieldHasChanged(const SoField* field) const {
    return m_changedFields.find(const_cast<SoField*>(field)) >= 0;
}

void PoBase::setListFieldsDefault(SoFieldList fields) {
    for (int i = 0; i < fields.getLength(); ++i)
        fields[i]->setDefault(TRUE);
}

void PoBase::touchKit(void) {
    markChanged();
    if (m_updateMethod != UPDATE_IMMEDIATELY)
        SoNode::touch();
}

SoFieldList PoBase::watchFields(std::initializer_list<SoField*> fields) {
    m_fieldWatches.push_back(std::make_unique<PoFieldWatch>(fields, &PoBase::fieldSensorCB, this));
    setUpConnections(TRUE, TRUE);
    return m_fieldWatches.back()->getFields();
}

// Connecting goes from the base to the most derived level, disconnecting
// the other way.
SbBool PoBase::setUpConnections(SbBool onOff, SbBool doItAlways) {
    if (!doItAlways && onOff == connectionsSetUp)
        return onOff;
    if (onOff) {
        SoBaseKit::setUpConnections(onOff, doItAlways);
        fieldSensorCB(this, nullptr);
        for (const auto& watch : m_fieldWatches)
            watch->attach();
    } else {
        for (auto watch = m_fieldWatches.rbegin(); watch != m_fieldWatches.rend(); ++watch)
            (*watch)->detach();
        SoBaseKit::setUpConnections(onOff, doItAlways);
    }
    connectionsSetUp = onOff;
    return !onOff;
}

// ------------------------------------------------------ catch action

bool PoBase::isIgnoredAction(SoAction* action) {
    if (action->isOfType(SoToVRML2Action::getClassTypeId()))
        return true;
    if (action->getTypeId().getName() == SbName("SoLdmValuationAction"))
        return true;
    if (action->isOfType(SoSearchAction::getClassTypeId()) &&
        static_cast<SoSearchAction*>(action)->isSearchingAll())
        return true;
    // The toolkit's write action never writes a net name on this platform.
    return false;
}

void PoBase::catchActionCB(void* data, SoAction* action) {
    if (!isIgnoredAction(action))
        static_cast<PoBase*>(data)->runCatchAction(action);
}

bool PoBase::testCache(SoCache* cache) const {
    return cache && cache->isValid(m_state);
}

void PoBase::runCatchAction(SoAction* action) {
    SbThreadAutoLock lock(&rebuildMutex());
    m_stateValid = true;
    if (action->isOfType(SoWriteAction::getClassTypeId())) {
        // Counting references rebuilds nothing; the state stays marked valid.
        if (static_cast<SoWriteAction*>(action)->getOutput()->getStage() == SoOutput::COUNT_REFS)
            return;
    }
    setState(action);
    addElementsAllCaches();
    m_cacheValid = testCache(m_elementCache);
    const bool domainCacheValid = testCache(m_domainCache);
    if (!m_modified && m_cacheValid && domainCacheValid) {
        m_stateValid = false;
        return;
    }
    if (!domainCacheValid) {
        updateDomainCache();
        if (!m_domainUsedForRebuild && !m_modified && m_cacheValid) {
            m_stateValid = false;
            return;
        }
    }
    if (!m_cacheValid || m_cacheAlwaysRebuild) {
        rebuildCache(&m_elementCache);
        m_cacheValid = 0;
        m_usedElements.clear();
    }
    rebuildWithoutNotification();
    m_stateValid = false;
}

void PoBase::updateDomainCache(void) {
    withoutNotification(this, [this] { setDomainTransform(getDomain()); });
    rebuildCache(&m_domainCache);
    if (const auto* element = PoClassRegistration::readableElement<PoDomainElement>(m_state))
        m_domainCache->addElement(element);
}

void PoBase::rebuildWithoutNotification(void) {
    const bool watched = SoLibScopel::isAvailable() && SoLibScopel::isRunning();
    const SbBool wasEnabled = watched ? isNotifyEnabled() : enableNotify(FALSE);
    rebuild();
    m_modified = 0;
    m_cacheValid = 1;
    enableNotify(wasEnabled);
}

void PoBase::catchActionLevel2CB(void*, SoAction* action) {
    if (!action->isOfType(SoGLRenderAction::getClassTypeId()))
        return;
    SoState* state = action->getState();
    if (!state->isElementEnabled(SoTextOutlineEnabledElement::getClassStackIndex()))
        return;
    const PbMiscTextAttr* attributes = PoMiscTextAttrElement::get(state);
    SoTextOutlineEnabledElement::set(state, attributes && attributes->isOutliningEnabled());
}

void PoBase::addElementsAllCaches(void) {
    if (!m_state)
        return;
    PoDomainElement::get(m_state);
    for (int stackIndex : m_usedElements)
        PoClassRegistration::readableElement(m_state, stackIndex);
}

void PoBase::setState(SoAction* action) {
    m_state = action->getState();
}

void PoBase::rebuildCache(SoCache** cache) {
    m_state->push();
    if (*cache)
        (*cache)->unref();
    *cache = new SoCache(m_state);
    (*cache)->ref();
    m_state->pop();
}

SoState* PoBase::dependOn(int stackIndex) {
    if (!m_stateValid || !m_state)
        return nullptr;
    // An element first read by a rebuild that kept the cache (one that a
    // field change caused) joins the cache as well.
    const bool firstRead =
        std::find(m_usedElements.begin(), m_usedElements.end(), stackIndex) == m_usedElements.end();
    if (firstRead)
        m_usedElements.push_back(stackIndex);
    const SoElement* element = PoClassRegistration::readableElement(m_state, stackIndex);
    if (element && (!m_cacheValid || firstRead) && m_elementCache)
        m_elementCache->addElement(element);
    return m_state;
}

// --------------------------------------------------- rebuild bracket

void PoBase::preRebuild(void) {
    if (m_preRebuildCallback)
        m_preRebuildCallback(m_preRebuildData, this);
}

void PoBase::postRebuild(void) {
    m_built = 1;
    m_modified = 0;
    m_anyFieldChanged = 0;
    m_renderPending = 1;
    if (m_postRebuildCallback)
        m_postRebuildCallback(m_postRebuildData, this);
}

void PoBase::addPreRebuildCallback(RebuildCallback callback, void* data) {
    m_preRebuildCallback = callback;
    m_preRebuildData = data;
}

void PoBase::addPostRebuildCallback(RebuildCallback callback, void* data) {
    m_postRebuildCallback = callback;
    m_postRebuildData = data;
}

void PoBase::removePreRebuildCallback(RebuildCallback callback, void* data) {
    if (m_preRebuildCallback == callback && m_preRebuildData == data) {
        m_preRebuildCallback = nullptr;
        m_preRebuildData = nullptr;
    }
}

void PoBase::removePostRebuildCallback(RebuildCallback callback, void* data) {
    if (m_postRebuildCallback == callback && m_postRebuildData == data) {
        m_postRebuildCallback = nullptr;
        m_postRebuildData = nullptr;
    }
}

void PoBase::GLRender(SoGLRenderAction* action) {
    m_renderPending = 0;
    SoBaseKit::GLRender(action);
}

// ------------------------------------------------------------ domain

void PoBase::setDomain(PbDomain* domain) {
    PbDomain* previous = m_domain == &m_defaultDomain ? nullptr : m_domain;
    changeConnection(previous, domain);
    setDomainTransform(domain);
    if (m_domainUsedForRebuild)
        touchKit();
    m_domain = domain ? domain : &m_defaultDomain;
}

const PbDomain* PoBase::getDomain(void) const {
    if (m_domain == &m_defaultDomain && m_stateValid && m_state) {
        // Actions that do not carry the library's state find no domain there.
        if (const PbDomain* domain = PoDomainElement::get(m_state))
            return domain;
    }
    return m_domain;
}

void PoBase::setDomainTransform(const PbDomain* domain) {
    if (!m_domainTransformEnabled)
        return;
    const bool identity = domain && domain->isHomogeneous() && domain->getTransformType() != 0;
    setAnyPart("domainTransform", domain && !identity ? domain->getMatrixTransform() : nullptr);
}

void PoBase::basicObjectChange(PbBase* object) {
    if (object != m_domain)
        return;
    const PbBase::ChangeType change = object->getChangeType();
    setDomainTransform(change == PbBase::DESTROYED ? nullptr : m_domain);
    if (change != PbBase::DOMAIN_TRANSFORM_TYPE && m_domainUsedForRebuild) {
        PbBase* member = m_domain;
        manageBasicObjectChange(object, &member);
        m_domain = static_cast<PbDomain*>(member);
    }
    // A destroyed domain is never kept, even when its change is not used
    // for rebuilding.
    if (!m_domain || change == PbBase::DESTROYED)
        m_domain = &m_defaultDomain;
}

void PoBase::manageBasicObjectChange(PbBase* object, PbBase** member) {
    if (object->getChangeType() != PbBase::DESTROYED) {
        touchKit();
        return;
    }
    if (*member) {
        *member = nullptr;
        withoutNotification(this, [this] { touchKit(); });
    }
}

void PoBase::changeConnection(PbBase* oldObject, PbBase* newObject) {
    if (oldObject)
        oldObject->removeConnection(this);
    if (newObject)
        newObject->addConnection(this);
}

// ----------------------------------------------------------- copying

SoNode* PoBase::copy(SbBool copyConnections) const {
    auto* duplicate = static_cast<PoBase*>(SoBaseKit::copy(copyConnections));
    duplicate->m_updateMethod = m_updateMethod;
    duplicate->setAnyPart("catchActionCallback", nullptr);
    duplicate->setAnyPart("catchActionLevel2Callback", nullptr);
    duplicate->installCallbacks();
    if (duplicate->m_updateMethod == UPDATE_AT_TRAVERSAL)
        duplicate->rebuild();
    return duplicate;
}

void PoBase::copyContents(const SoFieldContainer* from, SbBool copyConnections) {
    SoBaseKit::copyContents(from, copyConnections);
    installCallbacks();
}

SbBool PoBase::readInstance(SoInput* in, unsigned short flags) {
    const SbBool ok = SoBaseKit::readInstance(in, flags);
    installCallbacks();
    // The toolkit does not set up a kit's connections after reading it; doing
    // so here marks the kit changed even when no watched field was read.
    setUpConnections(TRUE, TRUE);
    return ok;
}

// ----------------------------------------------------------- writing

namespace {
bool hasFieldsToWrite(const SoNode* node) {
    if (!node)
        return false;
    const SoFieldData* fields = node->getFieldData();
    for (int i = 0; fields && i < fields->getNumFields(); ++i)
        if (!fields->getField(node, i)->isDefault())
            return true;
    return false;
}
} // namespace

void PoBase::write(SoWriteAction* action) {
    m_writeAction = action;
    SoBaseKit::write(action);
    m_writeAction = nullptr;
}

void PoBase::setDefaultOnNonWritingFields(void) {
    if (m_writeAction)
        m_state = m_writeAction->getState();
    SoBaseKit::setDefaultOnNonWritingFields();
    callbackList.setDefault(TRUE);
    catchActionLevel2Callback.setDefault(TRUE);
    catchActionCallback.setDefault(TRUE);
    if (s_nodeWriteFormat == FOLD_NODE_WRITE_FORMAT) {
        alternateRep.setDefault(TRUE);
        // The toolkit writes a part marked default anyway when something in
        // it is to be written (an appearance the kit or the application
        // set), and then under a DEF name of its own making that changes at
        // each round trip; such an appearance is left to be written plainly.
        if (!hasFieldsToWrite(appearance.getValue()))
            appearance.setDefault(TRUE);
    } else if (alternateRep.getValue()) {
        // The toolkit leaves out group parts whose own fields are default;
        // the representation is written for its children.
        alternateRep.setDefault(FALSE);
    }
}

// -------------------------------------------------------- appearance

void PoBase::setLightModel(SoLightModel::Model model) {
    auto* lightModel = new SoLightModel;
    lightModel->model = model;
    setAnyPart("appearance.lightModel", lightModel);
}

void PoBase::setDrawStyleAK(const SbString& prefix, SoDrawStyle::Style style) {
    auto* drawStyle = new SoDrawStyle;
    drawStyle->style = style;
    setAnyPart(SbName((prefix + ".drawStyle").getString()), drawStyle);
}

// ------------------------------------------- deleting transparent parts

namespace {
// A generated shape seen as a list of polygons (or polylines), each with
// the index of its material for per-part and per-face bindings.
struct Polygon {
    std::vector<int32_t> vertices;
    int materialIndex;
};

bool isPerPart(int binding) {
    return binding == SoMaterialBinding::PER_PART || binding == SoMaterialBinding::PER_PART_INDEXED;
}

bool isPerVertex(int binding) {
    return binding == SoMaterialBinding::PER_VERTEX ||
           binding == SoMaterialBinding::PER_VERTEX_INDEXED;
}

// Transparencies beyond the material's list count as opaque.
float transparencyAt(const SoMaterial* material, int index) {
    return index >= 0 && index < material->transparency.getNum() ? material->transparency[index]
                                                                 : 0.0f;
}

std::vector<Polygon> splitRuns(const int32_t* indices, int count) {
    std::vector<Polygon> polygons;
    Polygon current{{}, 0};
    for (int i = 0; i < count; ++i) {
        if (indices[i] < 0) {
            current.materialIndex = static_cast<int>(polygons.size());
            polygons.push_back(current);
            current.vertices.clear();
        } else {
            current.vertices.push_back(indices[i]);
        }
    }
    if (!current.vertices.empty()) {
        current.materialIndex = static_cast<int>(polygons.size());
        polygons.push_back(current);
    }
    return polygons;
}

std::vector<Polygon> indexedPolygons(const SoIndexedShape* shape) {
    return splitRuns(shape->coordIndex.getValues(0), shape->coordIndex.getNum());
}

// Whether a shape's material index names the material of each of its
// parts (its default, a single -1, names none).
bool namesMaterials(const SoMFInt32& materialIndex, size_t numParts) {
    return materialIndex.getNum() >= static_cast<int>(numParts) &&
           !(materialIndex.getNum() == 1 && materialIndex[0] < 0);
}

// A face set whose faces name their materials (per-face or per-part
// indexed binding with a material index) takes each face's transparency
// there.
std::vector<Polygon> indexedFaces(const SoIndexedShape* shape, int binding) {
    std::vector<Polygon> faces = indexedPolygons(shape);
    const bool indexed = binding == SoMaterialBinding::PER_FACE_INDEXED ||
                         binding == SoMaterialBinding::PER_PART_INDEXED;
    if (indexed && namesMaterials(shape->materialIndex, faces.size()))
        for (size_t f = 0; f < faces.size(); ++f)
            faces[f].materialIndex = shape->materialIndex[static_cast<int>(f)];
    return faces;
}

std::vector<Polygon> stripTriangles(const SoIndexedTriangleStripSet* strips, int binding) {
    std::vector<Polygon> triangles;
    const std::vector<Polygon> runs = indexedPolygons(strips);
    // Strips bound per part, indexed, may name their materials.
    const bool named = binding == SoMaterialBinding::PER_PART_INDEXED &&
                       namesMaterials(strips->materialIndex, runs.size());
    for (size_t strip = 0; strip < runs.size(); ++strip) {
        const std::vector<int32_t>& v = runs[strip].vertices;
        const int stripPart =
            named ? strips->materialIndex[static_cast<int>(strip)] : static_cast<int>(strip);
        for (size_t i = 2; i < v.size(); ++i) {
            const bool even = i % 2 == 0;
            const int part = isPerPart(binding) ? stripPart : static_cast<int>(triangles.size());
            triangles.push_back({even ? std::vector<int32_t>{v[i - 2], v[i - 1], v[i]}
                                      : std::vector<int32_t>{v[i - 1], v[i - 2], v[i]},
                                 part});
        }
    }
    return triangles;
}

std::vector<Polygon> quadMeshQuads(const SoQuadMesh* mesh, int binding) {
    std::vector<Polygon> quads;
    const int columns = mesh->verticesPerRow.getValue();
    const int rows = mesh->verticesPerColumn.getValue();
    const int start = mesh->startIndex.getValue();
    for (int r = 0; r + 1 < rows; ++r) {
        for (int c = 0; c + 1 < columns; ++c) {
            const int32_t first = start + r * columns + c;
            const int part = isPerPart(binding) ? r : static_cast<int>(quads.size());
            quads.push_back({{first, first + 1, first + columns + 1, first + columns}, part});
        }
    }
    return quads;
}

// Keeps the polygons (or, for per-vertex bindings, the runs of vertices)
// whose transparency is below the threshold; minimum is the smallest
// number of vertices a run needs to stay.
template <typename Shape>
Shape* rebuildWithoutTransparentParts(const std::vector<Polygon>& polygons, float threshold,
                                      SoMaterial* material, SoMaterialBinding* binding,
                                      size_t minimum) {
    auto* shape = new Shape;
    std::vector<int32_t> coordIndex;
    std::vector<int32_t> materialIndex;
    if (isPerVertex(binding->value.getValue())) {
        for (const Polygon& polygon : polygons) {
            std::vector<int32_t> run;
            auto flush = [&] {
                if (run.size() >= minimum) {
                    coordIndex.insert(coordIndex.end(), run.begin(), run.end());
                    coordIndex.push_back(-1);
                }
                run.clear();
            };
            for (int32_t vertex : polygon.vertices) {
                if (transparencyAt(material, vertex) < threshold)
                    run.push_back(vertex);
                else
                    flush();
            }
            flush();
        }
    } else {
        binding->value = SoMaterialBinding::PER_FACE_INDEXED;
        for (const Polygon& polygon : polygons) {
            if (transparencyAt(material, polygon.materialIndex) >= threshold)
                continue;
            coordIndex.insert(coordIndex.end(), polygon.vertices.begin(), polygon.vertices.end());
            coordIndex.push_back(-1);
            materialIndex.push_back(polygon.materialIndex);
        }
    }
    shape->coordIndex.setValues(0, static_cast<int>(coordIndex.size()), coordIndex.data());
    shape->coordIndex.setNum(static_cast<int>(coordIndex.size()));
    shape->materialIndex.setValues(0, static_cast<int>(materialIndex.size()), materialIndex.data());
    shape->materialIndex.setNum(static_cast<int>(materialIndex.size()));
    return shape;
}

// Nothing is deleted without transparencies at or above the threshold.
bool nothingToDelete(SoMaterial* material, SoMaterialBinding* binding, float threshold) {
    if (!material || !binding || binding->value.getValue() == SoMaterialBinding::OVERALL)
        return true;
    const float* transparencies = material->transparency.getValues(0);
    return std::none_of(transparencies, transparencies + material->transparency.getNum(),
                        [threshold](float transparency) { return transparency >= threshold; });
}

template <typename Shape>
Shape* replaceChild(Shape* replacement, const SoVertexShape* original, SoGroup* group, int index) {
    replacement->vertexProperty = original->vertexProperty.getValue();
    if (group && index >= 0 && index < group->getNumChildren())
        group->replaceChild(index, replacement);
    return replacement;
}

// Replaces the original shape by one without its transparent parts, or
// returns null when there is nothing to delete.  polygonsOf lists the
// original's polygons; it is called only once the inputs are known good.
template <typename Shape, typename Polygons>
Shape* deleteFaces(const PbDataMapping* mapping, SoMaterial* material, SoMaterialBinding* binding,
                   const SoVertexShape* original, SoGroup* group, int index, size_t minimumRun,
                   Polygons polygonsOf) {
    if (!mapping || !original ||
        nothingToDelete(material, binding, mapping->getTransparencyValueDeletedParts()))
        return nullptr;
    Shape* shape = rebuildWithoutTransparentParts<Shape>(
        polygonsOf(), mapping->getTransparencyValueDeletedParts(), material, binding, minimumRun);
    return replaceChild(shape, original, group, index);
}
} // namespace

SoIndexedFaceSet* PoBase::deleteTransparencyParts(const PbDataMapping* mapping,
                                                  SoMaterial* material, SoMaterialBinding* binding,
                                                  SoIndexedFaceSet* shape, SoGroup* group,
                                                  int index) {
    return deleteFaces<SoIndexedFaceSet>(
        mapping, material, binding, shape, group, index, 3,
        [shape, binding] { return indexedFaces(shape, binding->value.getValue()); });
}

SoIndexedFaceSet* PoBase::deleteTransparencyParts(const PbDataMapping* mapping,
                                                  SoMaterial* material, SoMaterialBinding* binding,
                                                  SoIndexedTriangleStripSet* shape, SoGroup* group,
                                                  int index) {
    return deleteFaces<SoIndexedFaceSet>(
        mapping, material, binding, shape, group, index, 3,
        [shape, binding] { return stripTriangles(shape, binding->value.getValue()); });
}

SoIndexedLineSet* PoBase::deleteTransparencyParts(const PbDataMapping* mapping,
                                                  SoMaterial* material, SoMaterialBinding* binding,
                                                  SoIndexedLineSet* shape, SoGroup* group,
                                                  int index) {
    return deleteFaces<SoIndexedLineSet>(mapping, material, binding, shape, group, index, 2,
                                         [shape] { return indexedPolygons(shape); });
}

SoIndexedFaceSet* PoBase::deleteTransparencyParts(const PbDataMapping* mapping,
                                                  SoMaterial* material, SoMaterialBinding* binding,
                                                  SoQuadMesh* shape, SoGroup* group, int index) {
    return deleteFaces<SoIndexedFaceSet>(
        mapping, material, binding, shape, group, index, 3,
        [shape, binding] { return quadMeshQuads(shape, binding->value.getValue()); });
}

SoLineSet* PoBase::deleteTransparencyParts(const PbDataMapping*, SoMaterial*, SoMaterialBinding*,
                                           SoLineSet* shape, SoGroup*, int) {
    // Line sets are kept whole.
    return shape;
}

void PoBase::deleteTransparencyParts(const PbDataMapping* mapping, SoMaterial* material,
                                     SoMaterialBinding* binding, SoGroup* group) {
    if (!group)
        return;
    for (int i = 0; i < group->getNumChildren(); ++i) {
        SoNode* child = group->getChild(i);
        if (child->isOfType(SoQuadMesh::getClassTypeId()))
            deleteTransparencyParts(mapping, material, binding, static_cast<SoQuadMesh*>(child),
                                    group, i);
        else if (child->isOfType(SoIndexedTriangleStripSet::getClassTypeId()))
            deleteTransparencyParts(mapping, material, binding,
                                    static_cast<SoIndexedTriangleStripSet*>(child), group, i);
        else if (child->isOfType(SoIndexedFaceSet::getClassTypeId()))
            deleteTransparencyParts(mapping, material, binding,
                                    static_cast<SoIndexedFaceSet*>(child), group, i);
        else if (child->isOfType(SoIndexedLineSet::getClassTypeId()))
            deleteTransparencyParts(mapping, material, binding,
                                    static_cast<SoIndexedLineSet*>(child), group, i);
    }
}
