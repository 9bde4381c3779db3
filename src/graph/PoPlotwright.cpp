#include <Quillon/graph/PoPlotwright.h>

PO_KIT_ABSTRACT_SOURCE(PoPlotwright, PoBase)

namespace {
// The chart node kits in their order of registration; unregistration runs
// the list backwards.
const PoClassRegistration::ClassEntry s_chartClasses[] = {
    PO_CLASS_ENTRY(PoPlotwright),
};
} // namespace

void PoPlotwright::initClasses(void) {
    PoClassRegistration::initAll(s_chartClasses);
}

void PoPlotwright::exitClasses(void) {
    PoClassRegistration::exitAllReversed(s_chartClasses);
}

PoPlotwright::PoPlotwright() {
    SO_KIT_CONSTRUCTOR(PoPlotwright);
    SO_KIT_INIT_INSTANCE();
}

PoPlotwright::~PoPlotwright() = default;
