#include <Quillon/nodes/PoMesh1DHints.h>

#include <Quillon/nodes/PoMesh1DHintsElement.h>

#include <Inventor/actions/SoAction.h>

PO_NODE_SOURCE(PoMesh1DHints, PoNode)

PoMesh1DHints::PoMesh1DHints() {
    SO_NODE_CONSTRUCTOR(PoMesh1DHints);
    SO_NODE_ADD_FIELD(geomInterpretation, (PoMesh1DHintsElement::getDefault()));
    SO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, AS_IS);
    SO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, STAIRS_X);
    SO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, STAIRS_Y);
    SO_NODE_DEFINE_ENUM_VALUE(GeomInterpretation, SMOOTH);
    SO_NODE_SET_SF_ENUM_TYPE(geomInterpretation, GeomInterpretation);
}

PoMesh1DHints::~PoMesh1DHints() = default;

void PoMesh1DHints::doAction(SoAction* action) {
    PoMesh1DHintsElement::set(action->getState(), this,
                              static_cast<GeomInterpretation>(geomInterpretation.getValue()));
}
