#include "CommandLine.h"

#include <charconv>
#include <cstring>

const char* const renderUsage =
    "usage: quillon-render SCENE.iv -o OUT.png [--size WxH] [--background R,G,B]";

namespace {

constexpr int maxSide = 16384;

// Reads one number from text up to expectedEnd ('\0' for the end of text),
// inside [low, high], and moves text past the separator.
template <class T> bool parseNumber(const char*& text, char expectedEnd, T low, T high, T& value) {
    const char* last = text + std::strlen(text);
    const auto [stop, status] = std::from_chars(text, last, value);
    if (status != std::errc() || *stop != expectedEnd || !(value >= low && value <= high))
        return false;
    text = expectedEnd ? stop + 1 : stop;
    return true;
}

bool parseSize(const char* text, RenderSettings& settings) {
    int width = 0;
    int height = 0;
    if (!parseNumber(text, 'x', 1, maxSide, width) || !parseNumber(text, '\0', 1, maxSide, height))
        return false;
    settings.width = width;
    settings.height = height;
    return true;
}

bool parseColor(const char* text, SbColor& color) {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    if (!parseNumber(text, ',', 0.0f, 1.0f, r) || !parseNumber(text, ',', 0.0f, 1.0f, g) ||
        !parseNumber(text, '\0', 0.0f, 1.0f, b))
        return false;
    color.setValue(r, g, b);
    return true;
}

} // namespace

bool parseCommandLine(int argc, const char* const* argv, RenderRequest& request,
                      std::string& error) {
    RenderRequest parsed;
    for (int i = 1; i < argc; ++i) {
        const char* argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (std::strcmp(argument, "-o") == 0 && hasValue) {
            parsed.outputPath = argv[++i];
        } else if (std::strcmp(argument, "--size") == 0 && hasValue) {
            if (!parseSize(argv[++i], parsed.settings)) {
                error = std::string("bad --size '") + argv[i] + "': expected WxH, each 1 to " +
                        std::to_string(maxSide);
                return false;
            }
        } else if (std::strcmp(argument, "--background") == 0 && hasValue) {
            if (!parseColor(argv[++i], parsed.settings.background)) {
                error = std::string("bad --background '") + argv[i] +
                        "': expected R,G,B, each between 0 and 1";
                return false;
            }
        } else if (argument[0] == '-' && argument[1] != '\0') {
            error = std::string("unknown or incomplete option '") + argument + "'";
            return false;
        } else if (parsed.scenePath.empty()) {
            parsed.scenePath = argument;
        } else {
            error = std::string("unexpected argument '") + argument + "'";
            return false;
        }
    }
    if (parsed.scenePath.empty() || parsed.outputPath.empty()) {
        error = parsed.scenePath.empty() ? "no scene file given" : "no output file given (-o)";
        return false;
    }
    request = parsed;
    return true;
}
