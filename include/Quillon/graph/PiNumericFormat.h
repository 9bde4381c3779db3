#pragma once
#include <Inventor/SbString.h>
#include <Quillon/QuillonApi.h>

class PbNumericDisplayFormat;

// Formats the numbers that charts and annotations print: integers or a
// fixed number of decimals, after division by a power of ten.  The
// automatic choice keeps the power of ten a multiple of three and gives just
// the decimals that the step and the minimum need.  The decimal separator is
// always a point, whatever the locale.
class QUILLON_API PiNumericFormat {
public:
    // Size of the buffer that getString(float, char*) may fill, terminator
    // included; longer texts are cut.
    static const int MAX_TEXT_SIZE = 64;

    void setFormatInteger(int tenPower);
    void setFormatFloatingPoint(int numDecimal, int tenPower);
    void setFormatAuto(float min, float max, float step, int stepRounding);
    // With no format object, or an automatic one, chooses from the values.
    void setFormat(const PbNumericDisplayFormat* format, float min, float max, float step,
                   int stepRounding);
    // For a list of values: the step is the mean gap, or the value itself
    // when there is only one.  An empty list changes nothing.
    void setFormat(const PbNumericDisplayFormat* format, int count, const float* values,
                   int stepRounding);

    void getString(float value, char* text) const;
    SbString getString(float value) const;

    int getTenPower() const { return m_tenPower; }
    int getNumDecimal() const { return m_numDecimal; }
    int isFloatingPointFormat() const { return m_floatingPoint; }
    // The printf-style format used for one value, such as "%d" or "%.2f".
    const char* getPrintFormat() const { return m_format; }

private:
    void findBestFormatOfDomain(float min, float max, float step, int stepRounding);
    void setPrintFormat();

    int m_floatingPoint = 0;
    int m_tenPower = 0;
    int m_numDecimal = 0;
    char m_format[12] = "%d";
};
