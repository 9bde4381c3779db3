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

void PbNonLinearDataMapping::computeColor(float value, float& transparency) const {
    if (m_rgbFunction || m_rgbFunctionWithData || m_hlsFunction || m_hlsFunctionWithData) {
        resultColor() = colorOf(value);
    } else {
        static const SbColor black(0, 0, 0), white(1, 1, 1);
        float unused;
        interpolate(value, 0, black, 0, 1, white, 0, unused);
    }
    transparency = transparencyOf(value);
}

void PbNonLinearDataMapping::clearColorFunctions() {
    m_rgbFunction = nullptr;
    m_rgbFunctionWithData = nullptr;
    m_hlsFunction = nullptr;
    m_hlsFunctionWithData = nullptr;
}

SbColor PbNonLinearDataMapping::colorOf(float value) const {
    if (m_rgbFunction)
        return m_rgbFunction(value);
    if (m_rgbFunctionWithData)
        return m_rgbFunctionWithData(m_userData, value);
    if (m_hlsFunction)
        return fromHls(m_hlsFunction(value));
    return fromHls(m_hlsFunctionWithData(m_userData, value));
}

float PbNonLinearDataMapping::transparencyOf(float value) const {
    if (m_transparencyFunction)
        return m_transparencyFunction(value);
    if (m_transparencyFunctionWithData)
        return m_transparencyFunctionWithData(m_userData, value);
    return 0;
}
