#include "platform/SbLocaleString.h"

#include <clocale>
#include <cstdio>
#include <locale.h>
#include <stdlib.h>

namespace {
// One "C" locale for the process, used through uselocale so that other
// threads keep theirs.
locale_t classicLocale() {
    static locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
    return locale;
}

class ClassicLocaleScope {
public:
    ClassicLocaleScope() : m_previous(uselocale(classicLocale())) {}
    ~ClassicLocaleScope() { uselocale(m_previous); }
    ClassicLocaleScope(const ClassicLocaleScope&) = delete;
    ClassicLocaleScope& operator=(const ClassicLocaleScope&) = delete;

private:
    locale_t m_previous;
};

template <typename T> SbString print(const char* format, T value) {
    ClassicLocaleScope scope;
    char text[128];
    snprintf(text, sizeof(text), format, value);
    return SbString(text);
}
} // namespace

SbString SbLocaleString::toString_l(const char* format, double value) {
    return print(format, value);
}

SbString SbLocaleString::toString_l(const char* format, int value) {
    return print(format, value);
}

bool SbLocaleString::parseFloat(const char* text, float& value) {
    if (!text || !*text)
        return false;
    char* end = nullptr;
    const float parsed = strtof_l(text, &end, classicLocale());
    if (end == text || *end != '\0')
        return false;
    value = parsed;
    return true;
}
