#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbBase.h>

#include <Inventor/SbString.h>

#include <cstdio>

// Text attributes shared by all chart texts: font, line breaking, profiles
// of 3D text and outlining.
class QUILLON_API PbMiscTextAttr : public PbBase {
public:
    PbMiscTextAttr();
    // Copying takes every attribute except outlining, which stays the
    // target's own (a new copy has outlining on).
    PbMiscTextAttr(const PbMiscTextAttr& other);
    PbMiscTextAttr& operator=(const PbMiscTextAttr& other);

    void setFontName(const char* name);
    void setFontName(const SbString& name);
    SbString getFontName() const { return m_fontName; }

    // The text builder may break texts into lines of lineLength characters
    // at endLineChar; a length of 0 keeps texts on one line.
    void setLineLength(char endLineChar, int lineLength);
    void getLineLength(char& endLineChar, int& lineLength) const;

    void enableProfile(int flag);
    int isProfileEnabled() const { return m_profileEnabled; }
    void enablePredefinedProfile(int flag);
    int isPredefinedProfileEnabled() const { return m_predefinedProfileEnabled; }
    void enableOutlining(int flag);
    int isOutliningEnabled() const { return m_outliningEnabled; }

    void print(FILE* fp) const;

private:
    void copyAttributes(const PbMiscTextAttr& other);
    void storeFlag(int& member, int flag);

    char m_endLineChar = ' ';
    int m_lineLength = 0;
    SbString m_fontName = "defaultFont";
    int m_profileEnabled = 0;
    int m_predefinedProfileEnabled = 1;
    int m_outliningEnabled = 1;
};
