#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoPlotwright.h>

// Root of the axis kits.
class QUILLON_API PoBaseAxis : public PoPlotwright {
    PO_KIT_ABSTRACT_HEADER(PoBaseAxis);

protected:
    PoBaseAxis();
    ~PoBaseAxis() override;
};
