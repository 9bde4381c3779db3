#include <Quillon/graph/PbMiscTextAttr.h>

#include <Quillon/graph/PoDebugError.h>

#include "graph/PbPrintout.h"

PbMiscTextAttr::PbMiscTextAttr() = default;

PbMiscTextAttr::PbMiscTextAttr(const PbMiscTextAttr& other) : PbBase(other) {
    copyAttributes(other);
}

PbMiscTextAttr& PbMiscTextAttr::operator=(const PbMiscTextAttr& other) {
    if (this == &other)
        return *this;
    copyAttributes(other);
    PbBase::operator=(other);
    return *this;
}

void PbMiscTextAttr::setFontName(const char* name) {
    if (!name) {
        PoDebugError::post("PbMiscTextAttr::setFontName", "null font name");
        return;
    }
    setFontName(SbString(name));
}

void PbMiscTextAttr::setFontName(const SbString& name) {
    m_fontName = name;
    setChangeType(CHANGE);
    notifyChange();
}

void PbMiscTextAttr::setLineLength(char endLineChar, int lineLength) {
    if (lineLength < 0) {
        PoDebugError::post("PbMiscTextAttr::setLineLength", "negative line length %d", lineLength);
        return;
    }
    m_endLineChar = endLineChar;
    m_lineLength = lineLength;
    setChangeType(CHANGE);
    notifyChange();
}

void PbMiscTextAttr::getLineLength(char& endLineChar, int& lineLength) const {
    endLineChar = m_endLineChar;
    lineLength = m_lineLength;
}

void PbMiscTextAttr::enableProfile(int flag) {
    storeFlag(m_profileEnabled, flag);
}

void PbMiscTextAttr::enablePredefinedProfile(int flag) {
    storeFlag(m_predefinedProfileEnabled, flag);
}

void PbMiscTextAttr::enableOutlining(int flag) {
    storeFlag(m_outliningEnabled, flag);
}

void PbMiscTextAttr::print(FILE* fp) const {
    const char endLine[2] = {m_endLineChar, '\0'};
    PbPrintout::banner(fp);
    PbPrintout::member(fp, "PbMiscTextAttr", "endLineChar", endLine);
    PbPrintout::member(fp, "PbMiscTextAttr", "lineLength", m_lineLength);
    PbPrintout::member(fp, "PbMiscTextAttr", "fontName", m_fontName.getString());
    PbPrintout::member(fp, "PbMiscTextAttr", "profileEnabled", m_profileEnabled);
    PbPrintout::member(fp, "PbMiscTextAttr", "predefinedProfileEnabled",
                       m_predefinedProfileEnabled);
    PbPrintout::member(fp, "PbMiscTextAttr", "outliningEnabled", m_outliningEnabled);
}

void PbMiscTextAttr::copyAttributes(const PbMiscTextAttr& other) {
    m_endLineChar = other.m_endLineChar;
    m_lineLength = other.m_lineLength;
    m_fontName = other.m_fontName;
    m_profileEnabled = other.m_profileEnabled;
    m_predefinedProfileEnabled = other.m_predefinedProfileEnabled;
}

void PbMiscTextAttr::storeFlag(int& member, int flag) {
    member = flag;
    setChangeType(CHANGE);
    notifyChange();
}
