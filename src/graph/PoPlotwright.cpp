#include <Quillon/graph/PoPlotwright.h>

#include <Quillon/Quillon.h>

#include "graph/PiText.h"
#include "graph/PoClassManifest.h"

#include <Inventor/fields/SoMFString.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>

#include <cmath>

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

int PoPlotwright::checkedEnum(const SoSFEnum& field, int count, int fallback) {
    const int value = field.getValue();
    if (value >= 0 && value < count)
        return value;
    SoFieldContainer* container = field.getContainer();
    SbName fieldName;
    container->getFieldName(&field, fieldName);
    const SbString method = SbString(container->getTypeId().getName().getString()) + "::rebuild";
    PoDebugError::postWarning(method.getString(),
                              "%s holds %d, which is none of its values; its default %d is used",
                              fieldName.getString(), value, fallback);
    return fallback;
}

float PoPlotwright::relativeSize(const SoSFFloat& field) {
    const float value = field.getValue();
    return std::isfinite(value) ? value : 0.0f;
}

SbString PoPlotwright::valueString(const PiNumericFormat& format, float value) {
    SbString text = format.getString(value);
    if (format.getTenPower() != 0) {
        SbString power;
        power.sprintf("E%d", format.getTenPower());
        text += power;
    }
    return text;
}

void PoPlotwright::setStrings(SoMFString& field, int count, const char* const* strings) {
    field.setNum(count);
    for (int i = 0; i < count; ++i)
        field.set1Value(i, strings[i] ? strings[i] : "");
}

void PoPlotwright::markPartDefault(const char* part) {
    if (SoField* field = getField(part))
        field->setDefault(TRUE);
}
