#include "platform/SoPreferences.h"

#include "platform/SbLocaleString.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string>

namespace {
const char* lookUp(const char* name) {
    return name ? std::getenv(name) : nullptr;
}

std::string lowerCase(const char* text) {
    std::string s(text);
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}
} // namespace

bool SoPreferences::getBool(const char* name, bool defaultValue) {
    const char* value = lookUp(name);
    if (!value)
        return defaultValue;
    const std::string word = lowerCase(value);
    if (word == "1" || word == "true" || word == "on" || word == "yes")
        return true;
    if (word == "0" || word == "false" || word == "off" || word == "no")
        return false;
    return defaultValue;
}

SbString SoPreferences::getString(const char* name, const SbString& defaultValue) {
    const char* value = lookUp(name);
    return value ? SbString(value) : defaultValue;
}

float SoPreferences::getFloat(const char* name, float defaultValue) {
    const char* value = lookUp(name);
    float parsed = 0;
    return value && SbLocaleString::parseFloat(value, parsed) ? parsed : defaultValue;
}
