#include <Quillon/graph/PbDataMapping.h>

#include <Quillon/graph/PiColorConversion.h>
#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

#include <atomic>

namespace {
std::atomic<unsigned int> s_nextId{0};

float clampToUnit(float x) {
    if (x > 1)
        x = 1;
    if (x < 0)
        x = 0;
    return x;
}
} // namespace

PbDataMapping::PbDataMapping() : m_id(s_nextId++) {}

const SbColor* PbDataMapping::getRGBColor(float value) const {
    float transparency;
    return getRGBColor(value, transparency);
}

const SbColor* PbDataMapping::getRGBColor(float value, float& transparency) const {
    SbColor color;
    if (!getRGBColor(value, color, transparency))
        return nullptr;
    m_resultColor = color;
    return &m_resultColor;
}

SbBool PbDataMapping::getRGBColor(float value, SbColor& color) const {
    float transparency;
    return getRGBColor(value, color, transparency);
}

SbBool PbDataMapping::getRGBColor(float value, SbColor& color, float& transparency) const {
    if (const Threshold* threshold = catchingThreshold(value)) {
        transparency = threshold->transparency;
        if (threshold->hasColor)
            color = threshold->color;
        return threshold->hasColor;
    }
    color = computeColor(value, transparency);
    return TRUE;
}

const PbDataMapping::Threshold* PbDataMapping::catchingThreshold(float value) const {
    // The minimum is tested first, so it wins when the thresholds cross.
    if (m_min.enabled && value <= m_min.value)
        return &m_min;
    if (m_max.enabled && value >= m_max.value)
        return &m_max;
    return nullptr;
}

const float* PbDataMapping::getHLSColor(float value) const {
    float transparency;
    return getHLSColor(value, transparency);
}

const float* PbDataMapping::getHLSColor(float value, float& transparency) const {
    return toHls(getRGBColor(value, transparency));
}

void PbDataMapping::setMinThreshold(float value) {
    setThreshold(m_min, value, nullptr, m_min.transparency);
}

void PbDataMapping::setMinThreshold(float value, const SbColor& color, float transparency) {
    setThreshold(m_min, value, &color, transparency);
}

void PbDataMapping::setMinThreshold(float value, const float hlsColor[3], float transparency) {
    setHlsThreshold(m_min, "PbDataMapping::setMinThreshold", value, hlsColor, transparency);
}

void PbDataMapping::setMaxThreshold(float value) {
    setThreshold(m_max, value, nullptr, m_max.transparency);
}

void PbDataMapping::setMaxThreshold(float value, const SbColor& color, float transparency) {
    setThreshold(m_max, value, &color, transparency);
}

void PbDataMapping::setMaxThreshold(float value, const float hlsColor[3], float transparency) {
    setHlsThreshold(m_max, "PbDataMapping::setMaxThreshold", value, hlsColor, transparency);
}

const SbColor* PbDataMapping::getMinRGBThreshold(float& value) const {
    float transparency;
    return getThreshold(m_min, value, transparency);
}

const SbColor* PbDataMapping::getMinRGBThreshold(float& value, float& transparency) const {
    return getThreshold(m_min, value, transparency);
}

const float* PbDataMapping::getMinHLSThreshold(float& value) const {
    return toHls(getMinRGBThreshold(value));
}

const float* PbDataMapping::getMinHLSThreshold(float& value, float& transparency) const {
    return toHls(getThreshold(m_min, value, transparency));
}

const SbColor* PbDataMapping::getMaxRGBThreshold(float& value) const {
    float transparency;
    return getThreshold(m_max, value, transparency);
}

const SbColor* PbDataMapping::getMaxRGBThreshold(float& value, float& transparency) const {
    return getThreshold(m_max, value, transparency);
}

const float* PbDataMapping::getMaxHLSThreshold(float& value) const {
    return toHls(getMaxRGBThreshold(value));
}

const float* PbDataMapping::getMaxHLSThreshold(float& value, float& transparency) const {
    return toHls(getThreshold(m_max, value, transparency));
}

void PbDataMapping::enableThresholds(int minEnabled, int maxEnabled) {
    m_min.enabled = minEnabled;
    m_max.enabled = maxEnabled;
    notifyChanged();
}

void PbDataMapping::thresholdsEnabled(int& minEnabled, int& maxEnabled) const {
    minEnabled = m_min.enabled;
    maxEnabled = m_max.enabled;
}

void PbDataMapping::enableTransparency(int flag) {
    m_transparencyEnabled = flag;
    notifyChanged();
}

void PbDataMapping::setTransparencyValueDeletedParts(float transparency) {
    m_transparencyValueDeletedParts = transparency;
}

void PbDataMapping::print(FILE* fp) const {
    PbPrintout::banner(fp);
    PbPrintout::member(fp, "PbDataMapping", "id", static_cast<int>(m_id));
    PbPrintout::member(fp, "PbDataMapping", "classType", static_cast<int>(getClassType()));
    PbPrintout::member(fp, "PbDataMapping", "transparencyEnabled", m_transparencyEnabled);
    PbPrintout::member(fp, "PbDataMapping", "transparencyValueDeletedParts",
                       m_transparencyValueDeletedParts);
    printThreshold(fp, "minThreshold", m_min);
    printThreshold(fp, "maxThreshold", m_max);
}

SbColor PbDataMapping::interpolate(float value, float valueA, const SbColor& colorA,
                                   float transparencyA, float valueB, const SbColor& colorB,
                                   float transparencyB, float& transparency) {
    const float t = (value - valueA) / (valueB - valueA);
    SbColor color;
    for (int channel = 0; channel < 3; ++channel)
        color[channel] = clampToUnit(colorA[channel] + (colorB[channel] - colorA[channel]) * t);
    transparency = clampToUnit(transparencyA + (transparencyB - transparencyA) * t);
    return color;
}

void PbDataMapping::notifyChanged() {
    setChangeType(CHANGE);
    notifyChange();
}

void PbDataMapping::setThreshold(Threshold& threshold, float value, const SbColor* color,
                                 float transparency) {
    threshold.value = value;
    threshold.transparency = transparency;
    threshold.hasColor = color != nullptr;
    if (color)
        threshold.color = *color;
    if (threshold.enabled)
        notifyChanged();
}

void PbDataMapping::setHlsThreshold(Threshold& threshold, const char* methodName, float value,
                                    const float hlsColor[3], float transparency) {
    if (!hlsColor) {
        PoDebugError::post(methodName, "null colour");
        return;
    }
    const SbColor color = PiColorConversion::hlsToRgb(hlsColor);
    setThreshold(threshold, value, &color, transparency);
}

const SbColor* PbDataMapping::getThreshold(const Threshold& threshold, float& value,
                                           float& transparency) const {
    value = threshold.value;
    transparency = threshold.transparency;
    return threshold.hasColor ? &threshold.color : nullptr;
}

const float* PbDataMapping::toHls(const SbColor* color) const {
    if (!color)
        return nullptr;
    PiColorConversion::rgbToHls(*color, m_resultHls);
    return m_resultHls;
}

void PbDataMapping::printThreshold(FILE* fp, const char* name, const Threshold& threshold) {
    const SbString prefix(name);
    PbPrintout::member(fp, "PbDataMapping", name, threshold.value);
    PbPrintout::member(fp, "PbDataMapping", (prefix + "Enabled").getString(), threshold.enabled);
    PbPrintout::member(fp, "PbDataMapping", (prefix + "HasColor").getString(), threshold.hasColor);
    PbPrintout::member(fp, "PbDataMapping", (prefix + "Color").getString(), threshold.color);
    PbPrintout::member(fp, "PbDataMapping", (prefix + "Transparency").getString(),
                       threshold.transparency);
}
