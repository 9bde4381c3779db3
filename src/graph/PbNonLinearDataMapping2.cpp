#include <Quillon/graph/PbNonLinearDataMapping2.h>

#include <Quillon/graph/PiColorConversion.h>
#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

#include <algorithm>
#include <numeric>

namespace {
template <typename T>
std::vector<T> permuted(const std::vector<T>& items, const std::vector<int>& order) {
    std::vector<T> result(items);
    for (size_t i = 0; i < order.size(); ++i)
        result[i] = items[order[i]];
    return result;
}
} // namespace

PbNonLinearDataMapping2::PbNonLinearDataMapping2() = default;

void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values,
                                        const SbColor* colors) {
    if (isValidInput(type, numValues, values, colors))
        store(type, numValues, values, colors, nullptr);
}

void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values,
                                        const SbColor* colors, const float* transparencies) {
    if (!transparencies) {
        PoDebugError::post("PbNonLinearDataMapping2::setValues", "null transparencies");
        return;
    }
    if (isValidInput(type, numValues, values, colors))
        store(type, numValues, values, colors, transparencies);
}

// The HLS forms check what they convert, then take the RGB path.
void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values,
                                        const HLSColor* colors) {
    if (isValidInput(type, numValues, values, colors))
        setValues(type, numValues, values, toRgb(type, numValues, colors).data());
}

void PbNonLinearDataMapping2::setValues(Type type, int numValues, const float* values,
                                        const HLSColor* colors, const float* transparencies) {
    if (isValidInput(type, numValues, values, colors))
        setValues(type, numValues, values, toRgb(type, numValues, colors).data(), transparencies);
}

const float* PbNonLinearDataMapping2::getValuesList(int& numValues) const {
    numValues = static_cast<int>(m_values.size());
    return m_values.data();
}

const SbColor* PbNonLinearDataMapping2::getRGBColorsList(int& numColors) const {
    numColors = static_cast<int>(m_colors.size());
    return m_colors.data();
}

const PbNonLinearDataMapping2::HLSColor*
PbNonLinearDataMapping2::getHLSColorsList(int& numColors) const {
    numColors = static_cast<int>(m_colors.size());
    m_hlsColors.reset(new HLSColor[m_colors.size()]);
    for (int i = 0; i < numColors; ++i)
        PiColorConversion::rgbToHls(m_colors[i], m_hlsColors[i]);
    return m_hlsColors.get();
}

const float* PbNonLinearDataMapping2::getTransparencyList(int& numTransparencies) const {
    numTransparencies = static_cast<int>(m_transparencies.size());
    return m_transparencies.data();
}

void PbNonLinearDataMapping2::print(FILE* fp) const {
    PbDataMapping::print(fp);
    PbPrintout::member(fp, "PbNonLinearDataMapping2", "type",
                       m_type == LINEAR_PER_LEVEL ? "LINEAR_PER_LEVEL" : "NON_LINEAR_PER_LEVEL");
    PbPrintout::member(fp, "PbNonLinearDataMapping2", "numValues",
                       static_cast<int>(m_values.size()));
    PbPrintout::list(fp, "PbNonLinearDataMapping2", "values", static_cast<int>(m_values.size()),
                     m_values.data());
    for (const SbColor& color : m_colors)
        PbPrintout::member(fp, "PbNonLinearDataMapping2", "color", color);
    PbPrintout::list(fp, "PbNonLinearDataMapping2", "transparencies",
                     static_cast<int>(m_transparencies.size()), m_transparencies.data());
}

SbColor PbNonLinearDataMapping2::computeColor(float value, float& transparency) const {
    if (m_colors.empty()) {
        transparency = 0;
        return SbColor(0, 0, 0);
    }
    return m_type == NON_LINEAR_PER_LEVEL ? levelColor(value, transparency)
                                          : interpolatedColor(value, transparency);
}

int PbNonLinearDataMapping2::colorCount(Type type, int numValues) const {
    return type == LINEAR_PER_LEVEL ? numValues : numValues + 1;
}

bool PbNonLinearDataMapping2::isValidInput(Type type, int numValues, const float* values,
                                           const void* colors) const {
    if (type != NON_LINEAR_PER_LEVEL && type != LINEAR_PER_LEVEL) {
        PoDebugError::post("PbNonLinearDataMapping2::setValues",
                           "unknown type %d (0 or 1 expected)", static_cast<int>(type));
        return false;
    }
    if (numValues < 0) {
        PoDebugError::post("PbNonLinearDataMapping2::setValues", "negative number of values %d",
                           numValues);
        return false;
    }
    if ((numValues > 0 && !values) || (colorCount(type, numValues) > 0 && !colors)) {
        PoDebugError::post("PbNonLinearDataMapping2::setValues", "null values or colours");
        return false;
    }
    return true;
}

std::vector<SbColor> PbNonLinearDataMapping2::toRgb(Type type, int numValues,
                                                    const HLSColor* colors) const {
    std::vector<SbColor> rgb(colorCount(type, numValues));
    for (size_t i = 0; i < rgb.size(); ++i)
        rgb[i] = PiColorConversion::hlsToRgb(colors[i]);
    return rgb;
}

// Kits are told of the change before the new values are copied in: a kit
// that rebuilds at once sees the emptied lists, one that rebuilds at the
// next traversal sees the new ones.
void PbNonLinearDataMapping2::store(Type type, int numValues, const float* values,
                                    const SbColor* colors, const float* transparencies) {
    const int numColors = colorCount(type, numValues);
    m_type = type;
    m_values.assign(numValues, 0.0f);
    m_colors.assign(numColors, SbColor(0, 0, 0));
    m_transparencies.assign(numColors, 0.0f);
    notifyChanged();
    std::copy(values, values + numValues, m_values.begin());
    std::copy(colors, colors + numColors, m_colors.begin());
    if (transparencies)
        std::copy(transparencies, transparencies + numColors, m_transparencies.begin());
    sortByValue();
}

// Sorts the values ascending, each taking its colour and transparency
// along; the extra last colour of the per-level type stays last.
void PbNonLinearDataMapping2::sortByValue() {
    std::vector<int> order(m_values.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [this](int a, int b) { return m_values[a] < m_values[b]; });
    m_values = permuted(m_values, order);
    m_colors = permuted(m_colors, order);
    m_transparencies = permuted(m_transparencies, order);
}

SbColor PbNonLinearDataMapping2::levelColor(float value, float& transparency) const {
    const size_t level =
        std::upper_bound(m_values.begin(), m_values.end(), value) - m_values.begin();
    transparency = m_transparencies[level];
    return m_colors[level];
}

SbColor PbNonLinearDataMapping2::interpolatedColor(float value, float& transparency) const {
    const int last = static_cast<int>(m_values.size()) - 1;
    if (last == 0) {
        transparency = m_transparencies[0];
        return m_colors[0];
    }
    int upper;
    if (value <= m_values[0])
        upper = 1;
    else if (value >= m_values[last])
        upper = last;
    else
        upper = static_cast<int>(std::lower_bound(m_values.begin(), m_values.end(), value) -
                                 m_values.begin());
    // A value that compares with nothing (NaN) still reads inside the lists.
    upper = std::min(std::max(upper, 1), last);
    return interpolate(value, m_values[upper - 1], m_colors[upper - 1], m_transparencies[upper - 1],
                       m_values[upper], m_colors[upper], m_transparencies[upper], transparency);
}
