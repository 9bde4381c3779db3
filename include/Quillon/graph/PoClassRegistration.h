#pragma once
#include <Quillon/QuillonApi.h>
// Class registration shared by every node, node kit and element of the library.
//
// Headers use PO_NODE_HEADER, PO_KIT_HEADER, PO_ELEMENT_HEADER (or their
// abstract forms); sources use the matching PO_*_SOURCE macro, which defines
// initClass() and exitClass() on top of the toolkit's own class data.
//
// initClass() registers the parent first when it is missing (with a
// message), creates the type with the next action-method index and
// remembers the parent's field data (and catalogue for kits).  exitClass()
// removes the type and frees the class data; a second call reports that the
// type cannot be removed and changes nothing.

#include <Inventor/SoType.h>
#include <Inventor/elements/SoCacheElement.h>
#include <Inventor/elements/SoReplacedElement.h>
#include <Inventor/elements/SoSubElement.h>
#include <Inventor/misc/SoState.h>
#include <Inventor/nodekits/SoSubKit.h>
#include <Inventor/nodes/SoSubNode.h>

class SoNodekitCatalog;

class QUILLON_API PoClassRegistration {
public:
    // Serialises registration across threads; recursive because a class
    // may register its parent while holding it.
    static void lock();
    static void unlock();

    // Registers the parent through parentInit when its type is still bad,
    // after posting "<class> initialized before parent class <parent>".
    static void ensureParent(const char* className, SoType parentType, const char* parentName,
                             void (*parentInit)());
    // Removes a registered type; reports and returns false when there is
    // none to remove (a class not registered, or already unregistered).
    static bool removeType(const char* className, SoType type);
    // The same check for element classes, whose types stay registered.
    static bool unregisterElement(const char* className, SoType type);

    // When the library is not initialised, posts that what (a class, or
    // "a Quillon node") is used before PoQuillon::init(), and how to put it
    // right; method names the poster.
    static void checkLibraryInitialized(const char* method, const char* what);

    // Enables an element in the nine actions that carry the library's state.
    static void enableElement(SoType type, int stackIndex);

    // The element of the state for reading, recorded in the caches open on
    // the state; null when the action traversing does not carry it.
    static const SoElement* readableElement(SoState* state, int stackIndex) {
        if (!state || !state->isElementEnabled(stackIndex))
            return nullptr;
        const SoElement* element = state->getConstElement(stackIndex);
        if (state->isCacheOpen())
            SoCacheElement::addElement(state, element);
        return element;
    }
    template <class Element> static const Element* readableElement(SoState* state) {
        return static_cast<const Element*>(readableElement(state, Element::getClassStackIndex()));
    }

    class Guard {
    public:
        Guard() { lock(); }
        ~Guard() { unlock(); }
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
    };
};

// Inside an element class: the element of the state for writing, recording
// the node that sets it; null when the action does not carry the element.
#define PO_WRITABLE_ELEMENT(_class_, _state_, _node_)                                              \
    ((_state_) && (_state_)->isElementEnabled(_class_::classStackIndex)                            \
         ? static_cast<_class_*>(                                                                  \
               SoReplacedElement::getElement(_state_, _class_::classStackIndex, _node_))           \
         : nullptr)

// ---------------------------------------------------------------- headers

#define PO_NODE_ABSTRACT_HEADER(_class_)                                                           \
public:                                                                                            \
    static void initClass(void);                                                                   \
    static void exitClass(void);                                                                   \
    SO_NODE_ABSTRACT_HEADER(_class_)

#define PO_NODE_HEADER(_class_)                                                                    \
    PO_NODE_ABSTRACT_HEADER(_class_);                                                              \
    static void* createInstance(void)

#define PO_KIT_ABSTRACT_HEADER(_class_)                                                            \
public:                                                                                            \
    static void initClass(void);                                                                   \
    static void exitClass(void);                                                                   \
    SO_KIT_ABSTRACT_HEADER(_class_)

#define PO_KIT_HEADER(_class_)                                                                     \
    PO_KIT_ABSTRACT_HEADER(_class_);                                                               \
    static void* createInstance(void)

// The toolkit's element header, spelt out: its own leaves a stray
// semicolon after an inline function.
#define PO_ELEMENT_HEADER(_class_)                                                                 \
public:                                                                                            \
    static void initClass(void);                                                                   \
    static void exitClass(void);                                                                   \
    static SoType getClassTypeId(void);                                                            \
    static int getClassStackIndex(void);                                                           \
    static void* createInstance(void);                                                             \
                                                                                                   \
protected:                                                                                         \
    _class_(void);                                                                                 \
                                                                                                   \
private:                                                                                           \
    static int classStackIndex;                                                                    \
    static SoType classTypeId

// ------------------------------------------------------------ common code

#define PO_PRIVATE_REGISTER_TYPE(_class_, _parent_, _createfunc_)                                  \
    PoClassRegistration::ensureParent(SO__QUOTE(_class_), _parent_::getClassTypeId(),              \
                                      SO__QUOTE(_parent_), &_parent_::initClass);                  \
    _class_::classTypeId =                                                                         \
        SoType::createType(_parent_::getClassTypeId(), SbName(SO__QUOTE(_class_)), _createfunc_,   \
                           static_cast<uint16_t>(SoNode::getNextActionMethodIndex()));             \
    if (_class_::parentFieldData == NULL)                                                          \
        SoNode::incNextActionMethodIndex();                                                        \
    _class_::parentFieldData = _parent_::getFieldDataPtr()

#define PO_PRIVATE_REMOVE_TYPE(_class_)                                                            \
    if (!PoClassRegistration::removeType(SO__QUOTE(_class_), _class_::classTypeId))                \
        return;                                                                                    \
    _class_::classTypeId = SoType::badType();                                                      \
    delete _class_::fieldData;                                                                     \
    _class_::fieldData = NULL;                                                                     \
    _class_::parentFieldData = NULL;                                                               \
    _class_::classinstances = 0

#define PO_PRIVATE_NODE_INIT_EXIT(_class_, _parent_, _createfunc_)                                 \
    void _class_::initClass(void) {                                                                \
        PoClassRegistration::Guard guard;                                                          \
        PO_PRIVATE_REGISTER_TYPE(_class_, _parent_, _createfunc_);                                 \
    }                                                                                              \
    void _class_::exitClass(void) {                                                                \
        PO_PRIVATE_REMOVE_TYPE(_class_);                                                           \
    }

#define PO_PRIVATE_KIT_INIT_EXIT(_class_, _parent_, _createfunc_)                                  \
    void _class_::initClass(void) {                                                                \
        {                                                                                          \
            PoClassRegistration::Guard guard;                                                      \
            PO_PRIVATE_REGISTER_TYPE(_class_, _parent_, _createfunc_);                             \
        }                                                                                          \
        _class_::parentcatalogptr = _parent_::getClassNodekitCatalogPtr();                         \
    }                                                                                              \
    void _class_::exitClass(void) {                                                                \
        PO_PRIVATE_REMOVE_TYPE(_class_);                                                           \
        delete _class_::classcatalog;                                                              \
        _class_::classcatalog = NULL;                                                              \
        _class_::parentcatalogptr = NULL;                                                          \
    }

// ---------------------------------------------------------------- sources

#define PO_NODE_SOURCE(_class_, _parent_)                                                          \
    SO_NODE_SOURCE(_class_)                                                                        \
    PO_PRIVATE_NODE_INIT_EXIT(_class_, _parent_, &_class_::createInstance)

#define PO_NODE_ABSTRACT_SOURCE(_class_, _parent_)                                                 \
    SO_NODE_ABSTRACT_SOURCE(_class_);                                                              \
    PO_PRIVATE_NODE_INIT_EXIT(_class_, _parent_, NULL)

#define PO_KIT_SOURCE(_class_, _parent_)                                                           \
    SO_KIT_SOURCE(_class_)                                                                         \
    PO_PRIVATE_KIT_INIT_EXIT(_class_, _parent_, &_class_::createInstance)

#define PO_KIT_ABSTRACT_SOURCE(_class_, _parent_)                                                  \
    SO_KIT_ABSTRACT_SOURCE(_class_)                                                                \
    PO_PRIVATE_KIT_INIT_EXIT(_class_, _parent_, NULL)

// Elements get a stack index of their own when the parent has none, and are
// enabled in the actions that carry the library's state.  The toolkit's
// actions keep every element type they were given for good, so an
// element's type stays in the type system after exitClass and a later
// initClass takes it up again with its stack index.
#define PO_PRIVATE_ELEMENT_REGISTER(_class_, _parent_)                                             \
    {                                                                                              \
        PoClassRegistration::Guard guard;                                                          \
        PoClassRegistration::ensureParent(SO__QUOTE(_class_), _parent_::getClassTypeId(),          \
                                          SO__QUOTE(_parent_), &_parent_::initClass);              \
        const SoType retained = SoType::fromName(SbName(SO__QUOTE(_class_)));                      \
        if (retained != SoType::badType()) {                                                       \
            _class_::classTypeId = retained;                                                       \
        } else {                                                                                   \
            _class_::classTypeId = SoType::createType(                                             \
                _parent_::getClassTypeId(), SbName(SO__QUOTE(_class_)), &_class_::createInstance); \
            _class_::classStackIndex = _parent_::getClassStackIndex() < 0                          \
                                           ? _class_::createStackIndex(_class_::classTypeId)       \
                                           : _parent_::getClassStackIndex();                       \
        }                                                                                          \
    }                                                                                              \
    PoClassRegistration::enableElement(_class_::classTypeId, _class_::classStackIndex)

// Evaluates to false, after reporting, when the class is not registered.
#define PO_PRIVATE_ELEMENT_REMOVE(_class_)                                                         \
    (PoClassRegistration::unregisterElement(SO__QUOTE(_class_), _class_::classTypeId)              \
         ? (_class_::classTypeId = SoType::badType(), true)                                        \
         : false)

#define PO_ELEMENT_SOURCE(_class_, _parent_)                                                       \
    SO_ELEMENT_SOURCE(_class_)                                                                     \
    void _class_::initClass(void) {                                                                \
        PO_PRIVATE_ELEMENT_REGISTER(_class_, _parent_);                                            \
    }                                                                                              \
    void _class_::exitClass(void) {                                                                \
        PO_PRIVATE_ELEMENT_REMOVE(_class_);                                                        \
    }

// An element holding a pointer to a property object.  The default is what
// init() puts at the bottom of the stack; a non-null default object is
// created at registration and deleted at unregistration.
#define PO_POINTER_ELEMENT_HEADER(_class_, _valuetype_)                                            \
    PO_ELEMENT_HEADER(_class_);                                                                    \
                                                                                                   \
public:                                                                                            \
    void init(SoState* state) override;                                                            \
    static void set(SoState* state, SoNode* node, const _valuetype_* value);                       \
    static const _valuetype_* get(SoState* state);                                                 \
                                                                                                   \
protected:                                                                                         \
    ~_class_() override;                                                                           \
    const _valuetype_* m_value = nullptr;                                                          \
                                                                                                   \
private:                                                                                           \
    static _valuetype_* s_default

#define PO_PRIVATE_POINTER_ELEMENT_SOURCE(_class_, _valuetype_, _createdefault_, _deletedefault_)  \
    SO_ELEMENT_SOURCE(_class_)                                                                     \
    _valuetype_* _class_::s_default = nullptr;                                                     \
    void _class_::initClass(void) {                                                                \
        PO_PRIVATE_ELEMENT_REGISTER(_class_, SoReplacedElement);                                   \
        _createdefault_;                                                                           \
    }                                                                                              \
    void _class_::exitClass(void) {                                                                \
        if (PO_PRIVATE_ELEMENT_REMOVE(_class_)) {                                                  \
            _deletedefault_;                                                                       \
            s_default = nullptr;                                                                   \
        }                                                                                          \
    }                                                                                              \
    _class_::~_class_() {}                                                                         \
    void _class_::init(SoState* state) {                                                           \
        SoReplacedElement::init(state);                                                            \
        m_value = s_default;                                                                       \
    }                                                                                              \
    void _class_::set(SoState* state, SoNode* node, const _valuetype_* value) {                    \
        auto* element =                                                                            \
            static_cast<_class_*>(SoReplacedElement::getElement(state, classStackIndex, node));    \
        if (element)                                                                               \
            element->m_value = value;                                                              \
    }                                                                                              \
    const _valuetype_* _class_::get(SoState* state) {                                              \
        const _class_* element = PoClassRegistration::readableElement<_class_>(state);             \
        return element ? element->m_value : nullptr;                                               \
    }

// The element's default is null.
#define PO_POINTER_ELEMENT_SOURCE(_class_, _valuetype_)                                            \
    PO_PRIVATE_POINTER_ELEMENT_SOURCE(_class_, _valuetype_, (void)0, (void)0)

// The element's default is an object created at registration.
#define PO_POINTER_ELEMENT_SOURCE_WITH_DEFAULT(_class_, _valuetype_, _newdefault_)                 \
    PO_PRIVATE_POINTER_ELEMENT_SOURCE(_class_, _valuetype_, s_default = _newdefault_,              \
                                      delete s_default)
