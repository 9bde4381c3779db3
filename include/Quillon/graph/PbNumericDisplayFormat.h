#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbBase.h>

#include <cstdio>

// How numbers are written: chosen automatically from the values, or
// fixed-point, or integer, with a power of ten by which values are divided.
class QUILLON_API PbNumericDisplayFormat : public PbBase {
public:
    enum FormatType { AUTO_FORMAT = 0, FLOAT_FORMAT = 1, INTEGER_FORMAT = 2 };

    // Largest number of decimals accepted.
    static const int MAX_DECIMALS = 20;

    explicit PbNumericDisplayFormat(FormatType type = AUTO_FORMAT, int tenPower = 0,
                                    int numDecimal = 0);
    PbNumericDisplayFormat(const PbNumericDisplayFormat& other);
    PbNumericDisplayFormat& operator=(const PbNumericDisplayFormat& other);

    void setFormat(FormatType type, int tenPower, int numDecimal);
    void getFormat(FormatType& type, int& tenPower, int& numDecimal) const;

    void print(FILE* fp) const;

private:
    FormatType m_formatType = AUTO_FORMAT;
    int m_tenPower = 0;
    int m_numDecimal = 0;
};
