#pragma once
#include <Inventor/SbString.h>

// Preferences read from the process environment; a value set there wins
// over the default given by the caller.
class SoPreferences {
public:
    // Accepts 1/0, true/false, on/off and yes/no in any case; anything else
    // gives the default.
    static bool getBool(const char* name, bool defaultValue);
    static SbString getString(const char* name, const SbString& defaultValue);
    // A value that is not entirely a number gives the default.
    static float getFloat(const char* name, float defaultValue);
};
