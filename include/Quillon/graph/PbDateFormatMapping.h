#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PbBase.h>

#include <Inventor/SbString.h>

#include <cstdio>

// Writes time values, seconds since 1970-01-01 00:00:00 UTC, as text with
// a strftime-like format, in UTC and in the "C" locale whatever the
// process locale.  Besides the strftime conversions ("%Y-%m-%d",
// "%H:%M:%S", "%b", ...), "%Nf" writes the first N (1 to 9) digits of the
// fraction of the second, and "%f" six of them.  The fraction is rounded to
// the finest "%Nf" of the format, carrying into the seconds; without one,
// time values are truncated to the second.
class QUILLON_API PbDateFormatMapping : public PbBase {
public:
    // "%Y-%m-%d %H:%M:%S"
    static const char* const DEFAULT_FORMAT;

    PbDateFormatMapping();
    explicit PbDateFormatMapping(const char* format);
    PbDateFormatMapping(const PbDateFormatMapping& other);
    PbDateFormatMapping& operator=(const PbDateFormatMapping& other);

    void setFormat(const char* format);
    void setFormat(const SbString& format);
    SbString getFormat() const { return m_format; }

    // False, with an empty text, for a time that cannot be written (not a
    // number, or beyond the years the system can represent).
    SbBool getString(double seconds, SbString& text) const;

    void print(FILE* fp) const;

private:
    SbString m_format = DEFAULT_FORMAT;
};
