#include <Quillon/graph/PbNumericDisplayFormat.h>

#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

namespace {
const char* const s_formatTypeNames[] = {"AUTO_FORMAT", "FLOAT_FORMAT", "INTEGER_FORMAT"};
}

PbNumericDisplayFormat::PbNumericDisplayFormat(FormatType type, int tenPower, int numDecimal) {
    setFormat(type, tenPower, numDecimal);
}

PbNumericDisplayFormat::PbNumericDisplayFormat(const PbNumericDisplayFormat& other)
    : PbBase(other), m_formatType(other.m_formatType), m_tenPower(other.m_tenPower),
      m_numDecimal(other.m_numDecimal) {}

PbNumericDisplayFormat& PbNumericDisplayFormat::operator=(const PbNumericDisplayFormat& other) {
    if (this == &other)
        return *this;
    m_formatType = other.m_formatType;
    m_tenPower = other.m_tenPower;
    m_numDecimal = other.m_numDecimal;
    PbBase::operator=(other);
    return *this;
}

void PbNumericDisplayFormat::setFormat(FormatType type, int tenPower, int numDecimal) {
    if (type < AUTO_FORMAT || type > INTEGER_FORMAT) {
        PoDebugError::post("PbNumericDisplayFormat::setFormat",
                           "unknown format type %d (0, 1 or 2 expected)", static_cast<int>(type));
        return;
    }
    if (numDecimal < 0 || numDecimal > MAX_DECIMALS) {
        PoDebugError::post("PbNumericDisplayFormat::setFormat", "numDecimal %d is outside [0, %d]",
                           numDecimal, MAX_DECIMALS);
        return;
    }
    m_formatType = type;
    m_tenPower = tenPower;
    m_numDecimal = numDecimal;
    setChangeType(CHANGE);
    notifyChange();
}

void PbNumericDisplayFormat::getFormat(FormatType& type, int& tenPower, int& numDecimal) const {
    type = m_formatType;
    tenPower = m_tenPower;
    numDecimal = m_numDecimal;
}

void PbNumericDisplayFormat::print(FILE* fp) const {
    PbPrintout::banner(fp);
    PbPrintout::member(fp, "PbNumericDisplayFormat", "formatType", s_formatTypeNames[m_formatType]);
    PbPrintout::member(fp, "PbNumericDisplayFormat", "tenPower", m_tenPower);
    PbPrintout::member(fp, "PbNumericDisplayFormat", "numDecimal", m_numDecimal);
}
