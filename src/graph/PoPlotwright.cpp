#include <Quillon/graph/PoPlotwright.h>

#include <Quillon/Quillon.h>

#include "graph/PoClassManifest.h"

PO_KIT_ABSTRACT_SOURCE(PoPlotwright, PoBase)

namespace {
const PoClassManifest::Entry s_chartClasses[] = {PO_CHART_KIT_CLASSES(PO_CLASS_ENTRY)};
} // namespace

void PoPlotwright::initClasses(void) {
    PoClassManifest::initAll(s_chartClasses);
}

void PoPlotwright::exitClasses(void) {
    PoClassManifest::exitAllReversed(s_chartClasses);
}

PoPlotwright::PoPlotwright() {
    SO_KIT_CONSTRUCTOR(PoPlotwright);
    SO_KIT_INIT_INSTANCE();
}

PoPlotwright::~PoPlotwright() = default;
