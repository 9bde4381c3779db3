#include <Quillon/graph/PiNumericFormat.h>

#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoDebugError.h>

#include "platform/SbLocaleString.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>

namespace {
const int s_significantDigits = 5;

// Number of digits before the decimal point of a positive number; for
// numbers below 1, minus the number of zeros after the point (D(0.5) = 0,
// D(0.05) = -1).
int digitCount(double x) {
    if (x >= 1)
        return static_cast<int>(std::floor(std::log10(x))) + 1;
    int digits = 0;
    while (x < 0.1) {
        x *= 10;
        --digits;
    }
    return digits;
}

// Multiple of three that brings the largest magnitude below 1000 and to at
// least 0.1 (engineering notation).
int engineeringTenPower(double magnitude) {
    const int digits = digitCount(magnitude);
    const int group = digits >= 0 ? (digits - 1) / 3 : digits / 3 - 1;
    return 3 * group;
}

// Decimals printed by "%.<precision>f" for x, less the trailing zeros and a
// trailing run of nines (a run of nines ends at the first zero dropped).
int countDecimals(double x, int precision) {
    const std::string format = "%." + std::to_string(precision) + "f";
    const SbString printed = SbLocaleString::toString_l(format.c_str(), x);
    const char* text = printed.getString();
    const char* separator = std::strchr(text, '.');
    if (!separator)
        separator = std::strchr(text, ',');
    if (!separator)
        return 0;
    int count = static_cast<int>(std::strlen(separator + 1));
    char lastDropped = '\0';
    while (count > 0) {
        const char c = separator[count];
        const bool dropNine = c == '9' && (lastDropped == '\0' || lastDropped == '9');
        if (c != '0' && !dropNine)
            break;
        lastDropped = c;
        --count;
    }
    return count;
}

// Decimals needed to write x with the significant-digit budget, x first
// rounded to two significant digits when asked.  A number with more digits
// than the budget is printed with none.
int decimalsNeeded(double x, int digits, int rounding) {
    const int precision = digits < 1 ? 4 : std::max(0, s_significantDigits - digits);
    if (rounding) {
        const double factor = std::pow(10.0, 2 - digits);
        x = std::trunc(x * factor + 0.5) / factor;
    }
    return countDecimals(x, precision);
}
} // namespace

void PiNumericFormat::setFormatInteger(int tenPower) {
    m_floatingPoint = 0;
    m_tenPower = tenPower;
    m_numDecimal = 0;
    setPrintFormat();
}

void PiNumericFormat::setFormatFloatingPoint(int numDecimal, int tenPower) {
    if (numDecimal < 0 || numDecimal > PbNumericDisplayFormat::MAX_DECIMALS) {
        PoDebugError::post("PiNumericFormat::setFormatFloatingPoint",
                           "numDecimal %d is outside [0, %d]", numDecimal,
                           PbNumericDisplayFormat::MAX_DECIMALS);
        return;
    }
    m_floatingPoint = 1;
    m_tenPower = tenPower;
    m_numDecimal = numDecimal;
    setPrintFormat();
}

void PiNumericFormat::setFormatAuto(float min, float max, float step, int stepRounding) {
    if (!std::isfinite(min) || !std::isfinite(max) || !std::isfinite(step)) {
        PoDebugError::post("PiNumericFormat::setFormatAuto",
                           "min, max and step must be finite numbers");
        return;
    }
    findBestFormatOfDomain(min, max, step, stepRounding);
    setPrintFormat();
}

void PiNumericFormat::setFormat(const PbNumericDisplayFormat* format, float min, float max,
                                float step, int stepRounding) {
    PbNumericDisplayFormat::FormatType type = PbNumericDisplayFormat::AUTO_FORMAT;
    int tenPower = 0, numDecimal = 0;
    if (format)
        format->getFormat(type, tenPower, numDecimal);
    if (type == PbNumericDisplayFormat::FLOAT_FORMAT)
        setFormatFloatingPoint(numDecimal, tenPower);
    else if (type == PbNumericDisplayFormat::INTEGER_FORMAT)
        setFormatInteger(tenPower);
    else
        setFormatAuto(min, max, step, stepRounding);
}

void PiNumericFormat::setFormat(const PbNumericDisplayFormat* format, int count,
                                const float* values, int stepRounding) {
    if (count < 0 || (count > 0 && !values)) {
        PoDebugError::post("PiNumericFormat::setFormat", "bad value list (count %d, values %p)",
                           count, static_cast<const void*>(values));
        return;
    }
    if (count == 0)
        return;
    const auto range = std::minmax_element(values, values + count);
    const float min = *range.first, max = *range.second;
    const float step = count >= 2 ? (max - min) / (count - 1) : max;
    setFormat(format, min, max, step, stepRounding);
}

void PiNumericFormat::getString(float value, char* text) const {
    if (!text) {
        PoDebugError::post("PiNumericFormat::getString", "null text buffer");
        return;
    }
    const SbString printed = getString(value);
    snprintf(text, MAX_TEXT_SIZE, "%s", printed.getString());
}

SbString PiNumericFormat::getString(float value) const {
    double scaled = value;
    if (m_tenPower != 0)
        scaled /= std::pow(10.0, m_tenPower);
    if (m_floatingPoint)
        return SbLocaleString::toString_l(m_format, scaled);
    const double rounded = std::trunc(scaled >= 0 ? scaled + 0.5 : scaled - 0.5);
    // Beyond the range of int the same digits are written through "%.0f".
    if (rounded >= INT_MIN && rounded <= INT_MAX)
        return SbLocaleString::toString_l("%d", static_cast<int>(rounded));
    return SbLocaleString::toString_l("%.0f", rounded);
}

void PiNumericFormat::findBestFormatOfDomain(float min, float max, float step, int stepRounding) {
    double a = std::fabs(min), s = std::fabs(step);
    const double largest = std::max(a, static_cast<double>(std::fabs(max)));
    m_floatingPoint = 0;
    m_tenPower = 0;
    m_numDecimal = 0;
    if (largest == 0)
        return;
    // The maximum only chooses the power of ten; the decimals follow the
    // step and the minimum.
    m_tenPower = engineeringTenPower(largest);
    if (m_tenPower != 0) {
        const double scale = std::pow(10.0, m_tenPower);
        a /= scale;
        s /= scale;
    }
    const int stepDecimals = decimalsNeeded(s, s == 0 ? 1 : digitCount(s), stepRounding);
    const int minDecimals = decimalsNeeded(a, a == 0 ? 0 : digitCount(a), stepRounding);
    m_numDecimal = std::max(stepDecimals, minDecimals);
    m_floatingPoint = m_numDecimal != 0;
}

void PiNumericFormat::setPrintFormat() {
    if (m_floatingPoint)
        snprintf(m_format, sizeof(m_format), "%%.%df", m_numDecimal);
    else
        snprintf(m_format, sizeof(m_format), "%%d");
}
