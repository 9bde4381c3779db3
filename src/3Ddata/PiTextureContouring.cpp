#include "3Ddata/PiTextureContouring.h"

#include "3Ddata/PiBandColors.h"
#include "platform/SbMathHelper.h"
#include "platform/SoPreferences.h"
#include "platform/SoTextureSupport.h"

#include <Quillon/graph/PbDataMapping.h>
#include <Quillon/graph/PbIsovaluesList.h>

#include <Inventor/nodes/SoTexture2.h>

#include <algorithm>
#include <cmath>

namespace {
const char* const s_smoothLegacy = "QUILLON_TEXTURE_CONTOURING_SMOOTH_LEGACY_BEHAVIOUR";
const char* const s_nonSmoothLegacy = "QUILLON_TEXTURE_CONTOURING_NONSMOOTH_LEGACY_BEHAVIOUR";
const char* const s_coordOffsetLegacy = "QUILLON_TEXTURE_CONTOURING_COORD_OFFSET_LEGACY_BEHAVIOUR";
const char* const s_transparencyLegacy = "QUILLON_TEXTURE_CONTOURING_TRANSPARENCY_LEGACY_BEHAVIOUR";

unsigned char toByte(float value) {
    return static_cast<unsigned char>(std::lround(std::min(std::max(value, 0.0f), 1.0f) * 255.0f));
}
} // namespace

PiTextureContouring::PiTextureContouring() = default;

PiTextureContouring::~PiTextureContouring() {
    if (m_texture)
        m_texture->unref();
}

void PiTextureContouring::setIsovaluesList(const PbIsovaluesList* list) {
    m_isovaluesList = list;
    m_isovalues.clear();
    int count = 0, regular = 1;
    float step = 0.0f;
    m_min = m_max = 0.0f;
    if (list) {
        const float* values = list->getIsoList(count, m_min, m_max, step, regular);
        if (values && count > 0)
            m_isovalues.assign(values, values + count);
    }
    const int n = static_cast<int>(m_isovalues.size());
    m_regular = regular != 0;
    m_width = 1 << SbMathHelper::getNextLog2(n + 1);
    m_texel = 1.0f / static_cast<float>(m_width);
    m_s0 = m_texel;
    m_legacyMode = SoPreferences::getBool(m_smooth ? s_smoothLegacy : s_nonSmoothLegacy, false);
    if (!m_legacyMode)
        m_s0 += m_texel / 2.0f;
    else if (!SoPreferences::getBool(s_coordOffsetLegacy, false))
        m_s0 += 0.0001f;
    const float span = static_cast<float>(std::max(n - 1, 0)) * m_texel;
    m_s1 = m_s0 + span;
    m_scale = m_max > m_min ? span / (m_max - m_min) : 0.0f;
}

bool PiTextureContouring::isCentred() const {
    return !m_smooth && !m_legacyMode;
}

void PiTextureContouring::buildTexture() {
    if (!m_texture) {
        m_texture = new SoTexture2;
        m_texture->ref();
        m_texture->wrapS = SoTexture2::CLAMP;
        m_texture->wrapT = SoTexture2::CLAMP;
        m_texture->model = SoTexture2::MODULATE;
    }
    const int n = static_cast<int>(m_isovalues.size());
    const int pixels = isCentred() ? 2 * m_width : m_width;
    std::vector<unsigned char> image(4 * static_cast<size_t>(pixels), 255);
    if (m_dataMapping) {
        const std::vector<PiBandColors::Color> bands =
            PiBandColors::getBandColors(*m_dataMapping, m_isovalues.data(), n);
        const bool withTransparency = m_dataMapping->isTransparencyEnabled() &&
                                      !SoPreferences::getBool(s_transparencyLegacy, false);
        for (int p = 0; p < pixels; ++p) {
            PiBandColors::Color color;
            if (isCentred())
                color = bands[std::min(std::max((p - 1) / 2, 0), n)];
            else if (m_smooth && p >= 1 && p <= n)
                color = PiBandColors::getValueColor(*m_dataMapping, m_isovalues[p - 1]);
            else
                color = bands[std::min(p, n)];
            unsigned char* texel = &image[4 * static_cast<size_t>(p)];
            for (int c = 0; c < 3; ++c)
                texel[c] = toByte(color.color[c]);
            texel[3] =
                !color.visible ? 0 : toByte(withTransparency ? 1.0f - color.transparency : 1.0f);
        }
    }
    m_texture->image.setValue(SbVec2s(static_cast<short>(pixels), 1), 4, image.data());
}

float PiTextureContouring::getTextureCoord(float value) const {
    const int n = static_cast<int>(m_isovalues.size());
    if (n < 2)
        return m_s0;
    if (m_regular) {
        if (!SoTextureSupport::isClampSupported()) {
            if (value < m_min)
                return 0.0f;
            if (value > m_max)
                return 0.999999f;
        }
        return m_s0 + (value - m_min) * m_scale;
    }
    return getIrregularCoord(value);
}

// Each band one texel wide; outside the range, the outer bands' widths
// carry on (clamped by the texture unit), or the ends are held when it
// cannot clamp.
float PiTextureContouring::getIrregularCoord(float value) const {
    const int n = static_cast<int>(m_isovalues.size());
    const float* iso = m_isovalues.data();
    auto fraction = [](float value, float from, float to) {
        return to != from ? (value - from) / (to - from) : 0.0f;
    };
    const bool clamp = SoTextureSupport::isClampSupported();
    if (value <= m_min)
        return clamp ? m_s0 + m_texel * fraction(value, iso[0], iso[1]) : m_s0;
    if (value >= m_max)
        return clamp ? m_s1 + m_texel * fraction(value, iso[n - 1], 2 * iso[n - 1] - iso[n - 2])
                     : m_s1;
    const int i = std::min(std::max(m_isovaluesList->getIndex(value) - 1, 0), n - 2);
    return m_s0 + m_texel * static_cast<float>(i) + m_texel * fraction(value, iso[i], iso[i + 1]);
}

void PiTextureContouring::getTextureCoords(int n, const float* values, SbVec2f* coordinates) const {
    for (int k = 0; k < n; ++k)
        coordinates[k].setValue(getTextureCoord(values[k]), 0.5f);
}
