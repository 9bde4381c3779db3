#include <Quillon/graph/PbDateFormatMapping.h>

#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <ctime>
#include <locale.h>
#include <string>
#include <time.h>
#include <vector>

namespace {
const int s_defaultFractionDigits = 6;
const int s_maxFractionDigits = 9;
// Beyond about 3e16 seconds the year no longer fits the broken-down time.
const double s_maxSeconds = 1e16;

locale_t classicLocale() {
    static locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
    return locale;
}

// A run of the format given to strftime as it is, or a fraction of the
// second written with fractionDigits digits.
struct Piece {
    std::string text;
    int fractionDigits;
};

// Splits the format at its "%Nf" and "%f" conversions.  Returns false when
// a fraction asks for a number of digits outside 1 to 9.
bool splitFractions(const std::string& format, std::vector<Piece>& pieces) {
    std::string pending;
    for (size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            pending += format[i];
            continue;
        }
        size_t end = i + 1;
        while (end < format.size() && std::isdigit(static_cast<unsigned char>(format[end])))
            ++end;
        if (end >= format.size() || format[end] != 'f') {
            // Another conversion, or "%%": strftime's business.
            pending += format.substr(i, 2);
            ++i;
            continue;
        }
        const std::string digits = format.substr(i + 1, end - i - 1);
        const int count = digits.empty()      ? s_defaultFractionDigits
                          : digits.size() > 1 ? 0
                                              : digits[0] - '0';
        if (count < 1 || count > s_maxFractionDigits)
            return false;
        pieces.push_back({pending, 0});
        pieces.push_back({std::string(), count});
        pending.clear();
        i = end;
    }
    pieces.push_back({pending, 0});
    return true;
}

int finestFraction(const std::vector<Piece>& pieces) {
    int finest = 0;
    for (const Piece& piece : pieces)
        finest = std::max(finest, piece.fractionDigits);
    return finest;
}

// The format for strftime, with each fraction replaced by its first digits
// of the finest fraction.
std::string expandFractions(const std::vector<Piece>& pieces, const std::string& fraction) {
    std::string expanded;
    for (const Piece& piece : pieces)
        expanded += piece.fractionDigits ? fraction.substr(0, piece.fractionDigits) : piece.text;
    return expanded;
}

std::string formatTime(const std::string& format, const struct tm& broken) {
    if (format.empty())
        return std::string();
    std::string buffer(64 + 4 * format.size(), '\0');
    for (int attempt = 0; attempt < 8; ++attempt, buffer.resize(buffer.size() * 2)) {
        const size_t written =
            strftime_l(&buffer[0], buffer.size(), format.c_str(), &broken, classicLocale());
        if (written > 0)
            return buffer.substr(0, written);
    }
    // strftime cannot tell an empty result from a short buffer.
    return std::string();
}
} // namespace

const char* const PbDateFormatMapping::DEFAULT_FORMAT = "%Y-%m-%d %H:%M:%S";

PbDateFormatMapping::PbDateFormatMapping() = default;

PbDateFormatMapping::PbDateFormatMapping(const char* format) {
    setFormat(format);
}

PbDateFormatMapping::PbDateFormatMapping(const PbDateFormatMapping& other)
    : PbBase(other), m_format(other.m_format) {}

PbDateFormatMapping& PbDateFormatMapping::operator=(const PbDateFormatMapping& other) {
    if (this == &other)
        return *this;
    m_format = other.m_format;
    PbBase::operator=(other);
    return *this;
}

void PbDateFormatMapping::setFormat(const char* format) {
    if (!format) {
        PoDebugError::post("PbDateFormatMapping::setFormat", "null format");
        return;
    }
    setFormat(SbString(format));
}

void PbDateFormatMapping::setFormat(const SbString& format) {
    std::vector<Piece> pieces;
    if (!splitFractions(format.getString(), pieces)) {
        PoDebugError::post("PbDateFormatMapping::setFormat",
                           "\"%s\": fractions of seconds take 1 to 9 digits", format.getString());
        return;
    }
    m_format = format;
    setChangeType(CHANGE);
    notifyChange();
}

SbBool PbDateFormatMapping::getString(double seconds, SbString& text) const {
    text.makeEmpty();
    std::vector<Piece> pieces;
    splitFractions(m_format.getString(), pieces);
    const int precision = finestFraction(pieces);
    const double scale = std::pow(10.0, precision);
    double whole = std::floor(seconds);
    double units = precision > 0 ? std::round((seconds - whole) * scale) : 0;
    if (units >= scale) {
        whole += 1;
        units = 0;
    }
    struct tm broken;
    const time_t time = std::fabs(whole) < s_maxSeconds ? static_cast<time_t>(whole) : 0;
    if (!(std::fabs(whole) < s_maxSeconds) || !gmtime_r(&time, &broken)) {
        PoDebugError::post("PbDateFormatMapping::getString", "cannot write the time %g", seconds);
        return FALSE;
    }
    char fraction[16];
    snprintf(fraction, sizeof(fraction), "%0*.0f", precision, units);
    text = formatTime(expandFractions(pieces, fraction), broken).c_str();
    return TRUE;
}

void PbDateFormatMapping::print(FILE* fp) const {
    PbPrintout::banner(fp);
    PbPrintout::member(fp, "PbDateFormatMapping", "format", m_format.getString());
}
