#include <Quillon/graph/PoPlotwright.h>

#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PiText.h>
#include <Quillon/graph/PoLinearAxis.h>
#include <Quillon/nodes/PoMiscTextAttrElement.h>

PO_KIT_ABSTRACT_SOURCE(PoPlotwright, PoBase)

namespace {
// The chart node kits in their order of registration; unregistration runs
// the list backwards.
const PoClassRegistration::ClassEntry s_chartClasses[] = {
    PO_CLASS_ENTRY(PoPlotwright),    PO_CLASS_ENTRY(PoBaseAxis),   PO_CLASS_ENTRY(PoAxis),
    PO_CLASS_ENTRY(PoCartesianAxis), PO_CLASS_ENTRY(PoLinearAxis),
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

PoPlotwright::~PoPlotwright() {
    changeConnection(m_miscTextAttr, nullptr);
    for (FieldSensorList& list : m_shimSensors) {
        detachFieldSensorList(&list);
        deleteFieldSensorList(&list);
    }
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
