#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PoClassRegistration.h>
#include <Quillon/graph/PoLibraryReference.h>

#include <Inventor/SbString.h>
#include <Inventor/fields/SoSFNode.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/nodekits/SoBaseKit.h>
#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoLightModel.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

class PbBase;
class PbDataMapping;
class PoFieldWatch;
class SoCache;
class SoCallback;
class SoFieldSensor;
class SoGroup;
class SoIndexedFaceSet;
class SoIndexedLineSet;
class SoIndexedTriangleStripSet;
class SoLineSet;
class SoMaterial;
class SoMaterialBinding;
class SoQuadMesh;
class SoSensor;
class SoState;
class SoWriteAction;

// Base of every node kit of the library.  A kit keeps its public fields and
// rebuilds a private representation under its alternateRep part lazily, at
// the next traversal after a watched field, a connected data object or a
// traversal-state element that the last rebuild read has changed.
//
// A kit, at each level of derivation, names its own fields once with
// watchFields() in its constructor, reads the traversal state with
// readElement() while it rebuilds, and opens its rebuild() with a
// RebuildScope:
//
//     PoMyKit::PoMyKit() {
//         SO_KIT_CONSTRUCTOR(PoMyKit);
//         SO_KIT_ADD_FIELD(scale, (1.0f));
//         SO_KIT_INIT_INSTANCE();
//         watchFields({&scale});
//     }
//
//     void PoMyKit::rebuild(void) {
//         RebuildScope scope(this); // preRebuild() now, postRebuild() on return
//         const PbDataMapping* mapping = readElement<PoDataMappingElement>();
//         ... build the parts under alternateRep ...
//     }
class QUILLON_API PoBase : private PoLibraryReference, public SoBaseKit {
    PO_KIT_ABSTRACT_HEADER(PoBase);

    SO_KIT_CATALOG_ENTRY_HEADER(catchActionCallback);
    SO_KIT_CATALOG_ENTRY_HEADER(alternateRep);
    SO_KIT_CATALOG_ENTRY_HEADER(catchActionLevel2Callback);
    SO_KIT_CATALOG_ENTRY_HEADER(appearance);
    SO_KIT_CATALOG_ENTRY_HEADER(domainTransform);

public:
    enum UpdateMethodType { UPDATE_IMMEDIATELY = 0, UPDATE_AT_TRAVERSAL = 1 };
    enum NodeWriteFormat { FOLD_NODE_WRITE_FORMAT = 0, UNFOLD_NODE_WRITE_FORMAT = 1 };
    enum TextType { SO_TEXT3 = 0, SO_ANNO_TEXT3 = 1 };

    using RebuildCallback = void (*)(void* data, PoBase* kit);
    using CatchActionCallback = void (*)(void* data, SoAction* action);

    struct FieldSensorList {
        int32_t num = 0;
        SoFieldSensor** sensors = nullptr;
    };

    // Library start-up and shut-down, counted.
    static void init(void);
    static void finish(void);
    static bool isInitialized(void);

    void setUpdateMethod(UpdateMethodType method) { m_updateMethod = method; }
    UpdateMethodType getUpdateMethod(void) const { return m_updateMethod; }
    int isModified(void) const { return m_modified; }
    int isBuilt(void) const { return m_built; }
    void touchKit(void);

    void setDomain(PbDomain* domain);
    const PbDomain* getDomain(void) const;
    void enableDomainTransform(int flag) { m_domainTransformEnabled = flag; }

    void setState(SoAction* action);
    void setStateValid(bool flag) { m_stateValid = flag; }
    SoState* getState(void) const { return m_state; }

    void addPreRebuildCallback(RebuildCallback callback, void* data);
    void addPostRebuildCallback(RebuildCallback callback, void* data);
    void removePreRebuildCallback(RebuildCallback callback, void* data);
    void removePostRebuildCallback(RebuildCallback callback, void* data);

    static void setNodeWriteFormat(NodeWriteFormat format) { s_nodeWriteFormat = format; }
    static NodeWriteFormat getNodeWriteFormat(void) { return s_nodeWriteFormat; }
    static void setTextType(TextType type) { s_textType = type; }
    static TextType getTextType(void) { return s_textType; }
    static void setVRML2Mode(int flag) { s_vrml2Mode = flag; }
    static int isVRML2Mode(void) { return s_vrml2Mode; }

    // Called by a connected data object when it changes or is destroyed.
    virtual void basicObjectChange(PbBase* object);

    SoNode* copy(SbBool copyConnections = FALSE) const override;
    SbBool affectsState(void) const override { return FALSE; }
    void write(SoWriteAction* action) override;
    void GLRender(SoGLRenderAction* action) override;

    // Removes the faces, strips or vertices of a generated shape that the
    // data mapping declares invisible; returns the replacement shape, or
    // null when nothing was to be removed.
    static SoIndexedFaceSet* deleteTransparencyParts(const PbDataMapping* mapping,
                                                     SoMaterial* material,
                                                     SoMaterialBinding* binding,
                                                     SoIndexedFaceSet* shape, SoGroup* group,
                                                     int index);
    static SoIndexedFaceSet* deleteTransparencyParts(const PbDataMapping* mapping,
                                                     SoMaterial* material,
                                                     SoMaterialBinding* binding,
                                                     SoIndexedTriangleStripSet* shape,
                                                     SoGroup* group, int index);
    static SoIndexedLineSet* deleteTransparencyParts(const PbDataMapping* mapping,
                                                     SoMaterial* material,
                                                     SoMaterialBinding* binding,
                                                     SoIndexedLineSet* shape, SoGroup* group,
                                                     int index);
    static SoIndexedFaceSet* deleteTransparencyParts(const PbDataMapping* mapping,
                                                     SoMaterial* material,
                                                     SoMaterialBinding* binding, SoQuadMesh* shape,
                                                     SoGroup* group, int index);
    static SoLineSet* deleteTransparencyParts(const PbDataMapping* mapping, SoMaterial* material,
                                              SoMaterialBinding* binding, SoLineSet* shape,
                                              SoGroup* group, int index);
    // Applies the variant of each shape child of the group.
    static void deleteTransparencyParts(const PbDataMapping* mapping, SoMaterial* material,
                                        SoMaterialBinding* binding, SoGroup* group);

protected:
    explicit PoBase(CatchActionCallback customCallback = nullptr);
    ~PoBase() override;

    virtual void rebuild(void) {}
    virtual void manageBasicObjectChange(PbBase* object, PbBase** member);
    // For basicObjectChange: when object is the one that member holds, reacts
    // to its change through manageBasicObjectChange and returns true.  A
    // destroyed object is forgotten before the rebuild that its end asks
    // for, so that the rebuild cannot reach it.
    template <class Object> bool manageConnectedObject(PbBase* object, Object*& member) {
        if (!object || object != member)
            return false;
        PbBase* held = member;
        if (object->getChangeType() == PbBase::DESTROYED)
            member = nullptr;
        manageBasicObjectChange(object, &held);
        member = static_cast<Object*>(held);
        return true;
    }
    virtual void preRebuild(void);
    virtual void postRebuild(void);
    // Reads every element the kit depends on, so that caches opened above
    // the kit record them.
    virtual void addElementsAllCaches(void);

    void setDefaultOnNonWritingFields(void) override;
    void copyContents(const SoFieldContainer* from, SbBool copyConnections) override;
    // A representation read from a file brings callback nodes without
    // functions; the kit's own are put back, and the kit is marked changed.
    SbBool readInstance(SoInput* in, unsigned short flags) override;
    SbBool setUpConnections(SbBool onOff, SbBool doItAlways = FALSE) override;

    // Watches fields of the kit: a change of any of them reaches
    // fieldSensorCB with the field's sensor, so it marks the kit changed (or
    // rebuilds it at once, with update method 0) and is recorded while
    // storing changed fields is on.  Each level of derivation calls it once,
    // at the end of its constructor, with its own fields.  The kit is then
    // connected (setUpConnections), and from then on connecting attaches the
    // sensors level by level from the base, disconnecting detaches them in
    // the reverse order; they are deleted with the kit.  Returns the fields
    // given, for setListFieldsDefault.
    SoFieldList watchFields(std::initializer_list<SoField*> fields);

    // Reads the traversal state through an element's getter (by default
    // Element::get) and makes the element a dependency of the kit: it is
    // recorded in the element cache that a rebuild fills, and read again by
    // addElementsAllCaches at the traversals that rebuild nothing, so that
    // the caches of separators above the kit record it too.  A later change
    // of the element rebuilds the kit.  Outside a traversal the getter is
    // given no state and answers its default (null for objects).
    template <class Element> auto readElement(void) { return readElement<Element>(&Element::get); }
    template <class Element, class Result, class... Params, class... Args>
    Result readElement(Result (*getter)(SoState*, Params...), Args&&... args) {
        return getter(dependOn(Element::getClassStackIndex()), std::forward<Args>(args)...);
    }

    // Brackets a rebuild: preRebuild() when it is made, postRebuild() when
    // it goes out of scope, on every way out of rebuild().  A kit that
    // overrides preRebuild or postRebuild calls its parent's first.
    class RebuildScope {
    public:
        explicit RebuildScope(PoBase* kit) : m_kit(kit) { m_kit->preRebuild(); }
        ~RebuildScope() { m_kit->postRebuild(); }
        RebuildScope(const RebuildScope&) = delete;
        RebuildScope& operator=(const RebuildScope&) = delete;

    private:
        PoBase* m_kit;
    };

    void createFieldSensorList(int count, FieldSensorList* list);
    void deleteFieldSensorList(FieldSensorList* list);
    void attachFieldSensorList(FieldSensorList* list, const SoFieldList& fields);
    void detachFieldSensorList(FieldSensorList* list);

    SbBool isFieldHasChanged(const SoField* field) const;
    int isAnyFieldsHasChanged(void) const { return m_anyFieldChanged; }
    void storeFieldsChanged(int flag) { m_storeFieldsChanged = flag; }
    SoFieldList& getChangedFields(void) { return m_changedFields; }
    void setListFieldsDefault(SoFieldList fields);

    bool isStateValid(void) const { return m_stateValid; }
    int isCacheValid(void) const { return m_cacheValid; }
    int isCacheAlwaysRebuild(void) const { return m_cacheAlwaysRebuild; }
    void setCacheAlwaysRebuild(int flag) { m_cacheAlwaysRebuild = flag; }
    int isDomainTransformEnabled(void) const { return m_domainTransformEnabled; }
    int isDomainUsedForRebuild(void) const { return m_domainUsedForRebuild; }
    void setDomainUsedForRebuild(int flag) { m_domainUsedForRebuild = flag; }
    int isRenderPending(void) const { return m_renderPending; }

    void setDomainTransform(const PbDomain* domain);
    void changeConnection(PbBase* oldObject, PbBase* newObject);
    // Moves the kit's connection from the object that member holds to
    // object, stores it and asks for a rebuild.
    template <class Object> void connectObject(Object*& member, Object* object) {
        changeConnection(member, object);
        member = object;
        touchKit();
    }
    void rebuildCache(SoCache** cache);

    void setLightModel(SoLightModel::Model model);
    void setDrawStyleAK(const SbString& prefix, SoDrawStyle::Style style);

    static void fieldSensorCB(void* data, SoSensor* sensor);

private:
    static void catchActionCB(void* data, SoAction* action);
    static void catchActionLevel2CB(void* data, SoAction* action);
    static bool isIgnoredAction(SoAction* action);

    void installCallbacks(void);
    void runCatchAction(SoAction* action);
    bool testCache(SoCache* cache) const;
    void updateDomainCache(void);
    void rebuildWithoutNotification(void);
    void markChanged(void);
    // The state for reading the element, after recording the element as a
    // dependency; null outside a traversal.
    SoState* dependOn(int stackIndex);

    static NodeWriteFormat s_nodeWriteFormat;
    static TextType s_textType;
    static int s_vrml2Mode;

    CatchActionCallback m_customCallback;
    SoFieldList m_changedFields;
    int m_storeFieldsChanged = 0;
    bool m_stateValid = false;
    UpdateMethodType m_updateMethod = UPDATE_AT_TRAVERSAL;
    int m_modified = 0;
    int m_built = 0;
    int m_domainTransformEnabled = 1;
    int m_domainUsedForRebuild = 1;
    int m_anyFieldChanged = 0;
    PbDomain m_defaultDomain;
    PbDomain* m_domain;
    SoState* m_state = nullptr;
    int m_renderPending = 0;
    int m_cacheAlwaysRebuild = 0;
    SoCache* m_elementCache = nullptr;
    SoCache* m_domainCache = nullptr;
    int m_cacheValid = 0;
    RebuildCallback m_preRebuildCallback = nullptr;
    void* m_preRebuildData = nullptr;
    RebuildCallback m_postRebuildCallback = nullptr;
    void* m_postRebuildData = nullptr;
    SoWriteAction* m_writeAction = nullptr;
    std::vector<std::unique_ptr<PoFieldWatch>> m_fieldWatches;
    // Stack indices of the elements read since the element cache was made.
    std::vector<int> m_usedElements;
};
