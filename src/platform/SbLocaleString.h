#pragma once
#include <Inventor/SbString.h>

// Number printing and parsing in the "C" locale, whatever the locale of the
// process: the decimal separator is always a point.
class SbLocaleString {
public:
    // Prints one number with a printf-style format such as "%.2f" or "%d".
    static SbString toString_l(const char* format, double value);
    static SbString toString_l(const char* format, int value);
    // Parses the whole text as a number; returns false when it is not one.
    static bool parseFloat(const char* text, float& value);
};
