#include <Quillon/graph/PbLinearDataMapping.h>

#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

namespace {
void copyColor(const SbColor& color, float rgb[3]) {
    color.getValue(rgb[0], rgb[1], rgb[2]);
}
} // namespace

PbLinearDataMapping::PbLinearDataMapping() = default;

void PbLinearDataMapping::setValues(float value1, const SbColor& color1, float value2,
                                    const SbColor& color2) {
    setValues(value1, color1, 0, value2, color2, 0);
}

void PbLinearDataMapping::setValues(float value1, const SbColor& color1, float transparency1,
                                    float value2, const SbColor& color2, float transparency2) {
    m_value1 = value1;
    m_color1 = color1;
    m_transparency1 = transparency1;
    m_value2 = value2;
    m_color2 = color2;
    m_transparency2 = transparency2;
    notifyChanged();
}

void PbLinearDataMapping::setValues(float value1, const float color1[3], float value2,
                                    const float color2[3]) {
    setValues(value1, color1, 0, value2, color2, 0);
}

void PbLinearDataMapping::setValues(float value1, const float color1[3], float transparency1,
                                    float value2, const float color2[3], float transparency2) {
    if (!color1 || !color2) {
        PoDebugError::post("PbLinearDataMapping::setValues", "null colour");
        return;
    }
    setValues(value1, SbColor(color1), transparency1, value2, SbColor(color2), transparency2);
}

void PbLinearDataMapping::getValues(float& value1, SbColor& color1, float& value2,
                                    SbColor& color2) const {
    float transparency1, transparency2;
    getValues(value1, color1, transparency1, value2, color2, transparency2);
}

void PbLinearDataMapping::getValues(float& value1, SbColor& color1, float& transparency1,
                                    float& value2, SbColor& color2, float& transparency2) const {
    value1 = m_value1;
    color1 = m_color1;
    transparency1 = m_transparency1;
    value2 = m_value2;
    color2 = m_color2;
    transparency2 = m_transparency2;
}

void PbLinearDataMapping::getValues(float& value1, float color1[3], float& value2,
                                    float color2[3]) const {
    float transparency1, transparency2;
    getValues(value1, color1, transparency1, value2, color2, transparency2);
}

void PbLinearDataMapping::getValues(float& value1, float color1[3], float& transparency1,
                                    float& value2, float color2[3], float& transparency2) const {
    if (!color1 || !color2) {
        PoDebugError::post("PbLinearDataMapping::getValues", "null colour");
        return;
    }
    SbColor rgb1, rgb2;
    getValues(value1, rgb1, transparency1, value2, rgb2, transparency2);
    copyColor(rgb1, color1);
    copyColor(rgb2, color2);
}

void PbLinearDataMapping::print(FILE* fp) const {
    PbDataMapping::print(fp);
    PbPrintout::member(fp, "PbLinearDataMapping", "value1", m_value1);
    PbPrintout::member(fp, "PbLinearDataMapping", "color1", m_color1);
    PbPrintout::member(fp, "PbLinearDataMapping", "transparency1", m_transparency1);
    PbPrintout::member(fp, "PbLinearDataMapping", "value2", m_value2);
    PbPrintout::member(fp, "PbLinearDataMapping", "color2", m_color2);
    PbPrintout::member(fp, "PbLinearDataMapping", "transparency2", m_transparency2);
}

SbColor PbLinearDataMapping::computeColor(float value, float& transparency) const {
    return interpolate(value, m_value1, m_color1, m_transparency1, m_value2, m_color2,
                       m_transparency2, transparency);
}
