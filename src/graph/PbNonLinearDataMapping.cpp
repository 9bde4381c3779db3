#include <Quillon/graph/PbNonLinearDataMapping.h>

#include <Quillon/graph/PiColorConversion.h>

#include "graph/PbPrintout.h"

namespace {
SbColor fromHls(const SbVec3f& hls) {
    return PiColorConversion::hlsToRgb(hls.getValue());
}
} // namespace

PbNonLinearDataMapping::PbNonLinearDataMapping() = default;

// The forms without user data keep the user data the others share.
void PbNonLinearDataMapping::setRGBFunction(RGBFunction function) {
    useColorFunction(m_rgbFunction, function, m_userData);
}

void PbNonLinearDataMapping::setRGBFunction(RGBFunctionWithData function, void* userData) {
    useColorFunction(m_rgbFunctionWithData, function, userData);
}

void PbNonLinearDataMapping::setHLSFunction(HLSFunction function) {
    useColorFunction(m_hlsFunction, function, m_userData);
}

void PbNonLinearDataMapping::setHLSFunction(HLSFunctionWithData function, void* userData) {
    useColorFunction(m_hlsFunctionWithData, function, userData);
}

void PbNonLinearDataMapping::setTransparencyFunction(TransparencyFunction function) {
    m_transparencyFunction = function;
    notifyChanged();
}

void PbNonLinearDataMapping::setTransparencyFunction(TransparencyFunctionWithData function,
                                                     void* userData) {
    m_transparencyFunctionWithData = function;
    m_userData = userData;
    notifyChanged();
}

void PbNonLinearDataMapping::print(FILE* fp) const {
    const char* colorFunction = m_rgbFunction           ? "RGB"
                                : m_rgbFunctionWithData ? "RGB with user data"
                                : m_hlsFunction         ? "HLS"
                                : m_hlsFunctionWithData ? "HLS with user data"
                                                        : "default";
    const char* transparencyFunction = m_transparencyFunction           ? "set"
                                       : m_transparencyFunctionWithData ? "set with user data"
                                                                        : "none";
    PbDataMapping::print(fp);
    PbPrintout::member(fp, "PbNonLinearDataMapping", "colorFunction", colorFunction);
    PbPrintout::member(fp, "PbNonLinearDataMapping", "transparencyFunction", transparencyFunction);
}

SbColor PbNonLinearDataMapping::computeColor(float value, float& transparency) const {
    const SbColor color = colorOf(value);
    transparency = transparencyOf(value);
    return color;
}

void PbNonLinearDataMapping::clearColorFunctions() {
    m_rgbFunction = nullptr;
    m_rgbFunctionWithData = nullptr;
    m_hlsFunction = nullptr;
    m_hlsFunctionWithData = nullptr;
}

// Without a colour function, black at 0 to white at 1.
SbColor PbNonLinearDataMapping::colorOf(float value) const {
    if (m_rgbFunction)
        return m_rgbFunction(value);
    if (m_rgbFunctionWithData)
        return m_rgbFunctionWithData(m_userData, value);
    if (m_hlsFunction)
        return fromHls(m_hlsFunction(value));
    if (m_hlsFunctionWithData)
        return fromHls(m_hlsFunctionWithData(m_userData, value));
    float unused;
    return interpolate(value, 0, SbColor(0, 0, 0), 0, 1, SbColor(1, 1, 1), 0, unused);
}

float PbNonLinearDataMapping::transparencyOf(float value) const {
    if (m_transparencyFunction)
        return m_transparencyFunction(value);
    if (m_transparencyFunctionWithData)
        return m_transparencyFunctionWithData(m_userData, value);
    return 0;
}
