#pragma once
#include <Quillon/graph/PoPlotwright.h>

// Root of the axis kits.
class PoBaseAxis : public PoPlotwright {
    PO_KIT_ABSTRACT_HEADER(PoBaseAxis);

protected:
    PoBaseAxis();
    ~PoBaseAxis() override;
};
