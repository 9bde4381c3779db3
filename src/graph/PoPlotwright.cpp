#include <Quillon/graph/PoPlotwright.h>

#include <Quillon/Quillon.h>

#include "graph/PiText.h"
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

PoPlotwright::~PoPlotwright() {
    changeConnection(m_miscTextAttr, nullptr);
}

void PoPlotwright::setMiscTextAttr(PbMiscTextAttr* attributes) {
    connectObject(m_miscTextAttr, attributes);
}

void PoPlotwright::basicObjectChange(PbBase* object) {
    if (!manageConnectedObject(object, m_miscTextAttr))
        PoBase::basicObjectChange(object);
}

const PbMiscTextAttr* PoPlotwright::getTextAttributes(void) {
    if (m_miscTextAttr)
        return m_miscTextAttr;
    return readElement<PoMiscTextAttrElement>();
}

void PoPlotwright::setUpText(PiText& text, const SbString& fontName, float size) {
    text.setMiscTextAttr(getTextAttributes());
    text.setFontName(fontName);
    text.setFontSize(size);
}
