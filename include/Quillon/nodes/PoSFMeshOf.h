#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoSFMesh.h>

#include <utility>

// What every mesh field has, for its mesh class MeshT: the held mesh, its
// value access and the field protocol.  A concrete field derives from
// PoSFMeshOf<its mesh class>, puts PO_SFMESH_HEADER in its class and
// PO_SFMESH_SOURCE in its source (which also compares and copies the
// geometry of its meshes), and supplies the header of its mesh class
// (writeHeaderOf, readHeaderOf).
template <class MeshT> class QUILLON_API PoSFMeshOf : public PoSFMesh {
public:
    const MeshT& getValue(void) const {
        evaluate();
        return m_mesh;
    }
    // Takes a duplicating copy of the mesh and signals a change, unless the
    // same-value rule (PoSFMesh) applies.
    void setValue(const MeshT& mesh) { setMeshValue(mesh); }

    int operator==(const PoSFMeshOf& field) const { return isSameMesh(field.getValue()); }
    int operator!=(const PoSFMeshOf& field) const { return !operator==(field); }

    void copyFrom(const SoField& field) override {
        setValue(static_cast<const PoSFMeshOf&>(field).getValue());
    }
    SbBool isSame(const SoField& field) const override {
        return field.getTypeId() == getTypeId() && operator==(
                                                       static_cast<const PoSFMeshOf&>(field));
    }
    size_t getValueSize(void) const { return sizeof(MeshT); }

    // Every setGeometry form of the mesh class, applied to the held mesh;
    // signals a change when the mesh took the new geometry (a refused one
    // leaves it as it was).  The mesh drops the sets that no longer fit.
    template <typename... Args>
    auto setGeometry(Args... args) -> decltype(std::declval<MeshT&>().setGeometry(args...)) {
        const unsigned int geometryId = m_mesh.getGeometryId();
        m_mesh.setGeometry(args...);
        if (m_mesh.getGeometryId() != geometryId)
            valueChanged();
    }

protected:
    PbMesh* getMesh(void) override { return &m_mesh; }
    const PbMesh& getHeldMesh(void) const override { return m_mesh; }
    std::unique_ptr<PbMesh> newMesh(void) const override { return std::make_unique<MeshT>(1); }
    void assignMesh(const PbMesh& mesh) override { m_mesh = static_cast<const MeshT&>(mesh); }
    void writeHeader(PiMeshSink& sink, const PbMesh& mesh) const override {
        writeHeaderOf(sink, static_cast<const MeshT&>(mesh));
    }
    bool readHeader(PiMeshSource& source, PbMesh& mesh) const override {
        return readHeaderOf(source, static_cast<MeshT&>(mesh));
    }
    bool sameGeometry(const PbMesh& a, const PbMesh& b) const override {
        return sameGeometryOf(static_cast<const MeshT&>(a), static_cast<const MeshT&>(b));
    }
    void copyGeometry(const PbMesh& from, PbMesh& to) const override {
        copyGeometryOf(static_cast<const MeshT&>(from), static_cast<MeshT&>(to));
    }

    virtual void writeHeaderOf(PiMeshSink& sink, const MeshT& mesh) const = 0;
    virtual bool readHeaderOf(PiMeshSource& source, MeshT& mesh) const = 0;
    virtual bool sameGeometryOf(const MeshT& a, const MeshT& b) const = 0;
    virtual void copyGeometryOf(const MeshT& from, MeshT& to) const = 0;

private:
    MeshT m_mesh{1};
};

// Inside a concrete mesh field class: its type, registration, construction
// and assignment.
#define PO_SFMESH_HEADER(_class_, _meshclass_)                                                     \
public:                                                                                            \
    _class_();                                                                                     \
    ~_class_() override;                                                                           \
    static SoType getClassTypeId(void);                                                            \
    SoType getTypeId(void) const override;                                                         \
    static void* createInstance(void);                                                             \
    static void initClass(void);                                                                   \
    static void exitClass(void);                                                                   \
    const _class_& operator=(const _class_& field);                                                \
    const _meshclass_& operator=(const _meshclass_& mesh);                                         \
                                                                                                   \
protected:                                                                                         \
    bool sameGeometryOf(const _meshclass_& a, const _meshclass_& b) const override;                \
    void copyGeometryOf(const _meshclass_& from, _meshclass_& to) const override;                  \
                                                                                                   \
private:                                                                                           \
    static SoType s_classTypeId

#define PO_SFMESH_SOURCE(_class_, _meshclass_)                                                     \
    SoType _class_::s_classTypeId;                                                                 \
    _class_::_class_() {                                                                           \
        checkRegistered(s_classTypeId, SO__QUOTE(_class_), &_class_::initClass);                   \
    }                                                                                              \
    _class_::~_class_() = default;                                                                 \
    SoType _class_::getClassTypeId(void) {                                                         \
        return s_classTypeId;                                                                      \
    }                                                                                              \
    SoType _class_::getTypeId(void) const {                                                        \
        return s_classTypeId;                                                                      \
    }                                                                                              \
    void* _class_::createInstance(void) {                                                          \
        return new _class_;                                                                        \
    }                                                                                              \
    void _class_::initClass(void) {                                                                \
        registerType(s_classTypeId, SO__QUOTE(_class_), &_class_::createInstance);                 \
    }                                                                                              \
    void _class_::exitClass(void) {                                                                \
        unregisterType(s_classTypeId, SO__QUOTE(_class_));                                         \
    }                                                                                              \
    const _class_& _class_::operator=(const _class_& field) {                                      \
        setValue(field.getValue());                                                                \
        return *this;                                                                              \
    }                                                                                              \
    const _meshclass_& _class_::operator=(const _meshclass_& mesh) {                               \
        setValue(mesh);                                                                            \
        return getValue();                                                                         \
    }                                                                                              \
    bool _class_::sameGeometryOf(const _meshclass_& a, const _meshclass_& b) const {               \
        return PiMeshGeometry::same(a, b);                                                         \
    }                                                                                              \
    void _class_::copyGeometryOf(const _meshclass_& from, _meshclass_& to) const {                 \
        PiMeshGeometry::copy(from, to);                                                            \
    }
