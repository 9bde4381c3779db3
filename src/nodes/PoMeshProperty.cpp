#include <Quillon/nodes/PoMeshProperty.h>

PO_NODE_ABSTRACT_SOURCE(PoMeshProperty, PoNode)

PoMeshProperty::PoMeshProperty() {
    SO_NODE_CONSTRUCTOR(PoMeshProperty);
}

PoMeshProperty::~PoMeshProperty() = default;
