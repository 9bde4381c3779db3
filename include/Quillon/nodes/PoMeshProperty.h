#pragma once
#include <Quillon/3Ddata/PbMesh.h>
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoNode.h>

class PoSFMesh;

// Base of the mesh property nodes.  Each holds its mesh in its only field,
// "mesh", and puts it into the traversal state (PoMeshElement) for the
// representation kits below, unless the field is ignored.
class QUILLON_API PoMeshProperty : public PoNode {
    PO_NODE_ABSTRACT_HEADER(PoMeshProperty);

public:
    enum DataBinding { PER_CELL = PbMesh::PER_CELL, PER_NODE = PbMesh::PER_NODE };

    // The mesh of the field "mesh", and the field.
    virtual const PbMesh* getMesh(void) const = 0;
    virtual PoSFMesh* getSFieldMesh(void) = 0;

protected:
    PoMeshProperty();
    ~PoMeshProperty() override;
};

// Inside a concrete mesh property node: the field "mesh" of type _field_
// holding a _meshclass_, its accessors and the traversal.
#define PO_MESH_PROPERTY_HEADER(_class_, _field_, _meshclass_)                                     \
    PO_NODE_HEADER(_class_);                                                                       \
                                                                                                   \
public:                                                                                            \
    _field_ mesh;                                                                                  \
                                                                                                   \
    _class_();                                                                                     \
    const _meshclass_* getMesh(void) const override;                                               \
    /* Every setGeometry form of the mesh class, applied to the field. */                          \
    template <typename... Args>                                                                    \
    auto setGeometry(Args... args)->decltype(mesh.setGeometry(args...)) {                          \
        mesh.setGeometry(args...);                                                                 \
    }                                                                                              \
    _field_* getSFieldMesh(void) override;                                                         \
    void doAction(SoAction* action) override;                                                      \
                                                                                                   \
protected:                                                                                         \
    ~_class_() override;                                                                           \
                                                                                                   \
private:

#define PO_MESH_PROPERTY_SOURCE(_class_, _field_, _meshclass_)                                     \
    PO_NODE_SOURCE(_class_, PoMeshProperty)                                                        \
    _class_::_class_() {                                                                           \
        SO_NODE_CONSTRUCTOR(_class_);                                                              \
        SO_NODE_ADD_FIELD(mesh, (_meshclass_()));                                                  \
    }                                                                                              \
    _class_::~_class_() = default;                                                                 \
    const _meshclass_* _class_::getMesh(void) const {                                              \
        return &mesh.getValue();                                                                   \
    }                                                                                              \
    _field_* _class_::getSFieldMesh(void) {                                                        \
        return &mesh;                                                                              \
    }                                                                                              \
    void _class_::doAction(SoAction* action) {                                                     \
        if (!mesh.isIgnored())                                                                     \
            PoMeshElement::set(action->getState(), this, &mesh.getValue());                        \
    }
