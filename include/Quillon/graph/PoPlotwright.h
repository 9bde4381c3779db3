#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoBase.h>

// Base of the chart node kits: axes, curves, histograms, pie charts,
// legends, labels and plane or spatial shapes.
class QUILLON_API PoPlotwright : public PoBase {
    PO_KIT_ABSTRACT_HEADER(PoPlotwright);

public:
    // Registers (and unregisters) every chart node kit, in a fixed order.
    static void initClasses(void);
    static void exitClasses(void);

protected:
    PoPlotwright();
    ~PoPlotwright() override;
};
