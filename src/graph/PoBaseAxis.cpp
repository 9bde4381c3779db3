#include <Quillon/graph/PoBaseAxis.h>

PO_KIT_ABSTRACT_SOURCE(PoBaseAxis, PoPlotwright)

PoBaseAxis::PoBaseAxis() {
    SO_KIT_CONSTRUCTOR(PoBaseAxis);
    SO_KIT_INIT_INSTANCE();
}

PoBaseAxis::~PoBaseAxis() = default;
