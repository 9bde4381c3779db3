#include "CommandLine.h"

#include <charconv>
#include <cstring>
#include <strings.h>

const char* const renderUsage = "usage: quillon-render SCENE.iv -o OUT.png [--size WxH] "
                                "[--background R,G,B] [--strict]\n"
                                "       quillon-render --help | --version";

const char* const renderHelp =
    "Draws a scene file into a PNG picture, without a display.\n"
    "\n"
    "  -o OUT.png            the picture to write\n"
    "  --size WxH            its size in pixels (default 800x600)\n"
    "  --background R,G,B    the background colour, each channel between 0 and 1\n"
    "                        (default 0,0,0)\n"
    "  --strict              fail on warnings too: problems the scene reader\n"
    "                        worked around, and pictures that come out blank\n"
    "  -h, --help            show this help\n"
    "  --version             show the version\n"
    "\n"
    "A scene without a camera is framed by one, a scene without a light gets a\n"
    "headlight.  Exit status: 0 done, 1 the scene or the picture failed, 2 wrong\n"
    "arguments.";

namespace {

constexpr int maxSide = 16384;

// Reads an integer up to expectedEnd ('\0' for the end of text), inside
// [low, high], and moves text past the separator.
bool parseInt(const char*& text, char expectedEnd, int low, int high, int& value) {
    const auto [stop, status] = std::from_chars(text, text + std::strlen(text), value);
    if (status != std::errc() || *stop != expectedEnd || value < low || value > high)
        return false;
    text = expectedEnd ? stop + 1 : stop;
    return true;
}

// The same for a number between 0 and 1 in any notation the C language
// knows: "0.5", ".5", "+5e-1", "0x1p-1", independent of the locale.
bool parseChannel(const char*& text, char expectedEnd, float& value) {
    const char* first = text;
    if (*first == '+' && first[1] != '-')
        ++first;
    std::chars_format format = std::chars_format::general;
    if (first[0] == '0' && (first[1] == 'x' || first[1] == 'X')) {
        first += 2;
        format = std::chars_format::hex;
    }
    const auto [stop, status] = std::from_chars(first, first + std::strlen(first), value, format);
    if (status != std::errc() || *stop != expectedEnd || !(value >= 0.0f && value <= 1.0f))
        return false;
    text = expectedEnd ? stop + 1 : stop;
    return true;
}

bool parseSize(const char* text, RenderSettings& settings) {
    int width = 0;
    int height = 0;
    if (!parseInt(text, 'x', 1, maxSide, width) || !parseInt(text, '\0', 1, maxSide, height))
        return false;
    settings.width = width;
    settings.height = height;
    return true;
}

bool parseColor(const char* text, SbColor& color) {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    if (!parseChannel(text, ',', r) || !parseChannel(text, ',', g) || !parseChannel(text, '\0', b))
        return false;
    color.setValue(r, g, b);
    return true;
}

bool endsWithPng(const std::string& path) {
    return path.size() > 4 && strcasecmp(path.c_str() + path.size() - 4, ".png") == 0;
}

// Reads the command line into a request; error is set on the first wrong
// argument.
class Parser {
public:
    Parser(int argc, const char* const* argv) : m_argc(argc), m_argv(argv) {}

    bool parse(RenderRequest& request, std::string& error) {
        for (m_next = 1; m_next < m_argc && m_error.empty();)
            parseArgument(m_argv[m_next++]);
        if (m_error.empty() && m_request.action == RenderRequest::RENDER)
            checkComplete();
        if (!m_error.empty()) {
            error = m_error;
            return false;
        }
        request = m_request;
        return true;
    }

private:
    void parseArgument(const std::string& argument) {
        if (argument == "-h" || argument == "--help") {
            m_request.action = RenderRequest::SHOW_HELP;
            m_next = m_argc;
        } else if (argument == "--version") {
            m_request.action = RenderRequest::SHOW_VERSION;
            m_next = m_argc;
        } else if (argument == "-o") {
            if (const char* path = once(argument, m_seenOutput))
                m_request.outputPath = path;
        } else if (argument == "--size") {
            const char* value = once(argument, m_seenSize);
            if (value && !parseSize(value, m_request.settings))
                m_error = std::string("bad --size '") + value + "': expected WxH, each 1 to " +
                          std::to_string(maxSide);
        } else if (argument == "--background") {
            const char* value = once(argument, m_seenBackground);
            if (value && !parseColor(value, m_request.settings.background))
                m_error = std::string("bad --background '") + value +
                          "': expected R,G,B, each a number between 0 and 1";
        } else if (argument == "--strict") {
            m_request.strict = true;
        } else if (argument.size() > 1 && argument[0] == '-') {
            m_error = "unknown option '" + argument + "'";
        } else if (m_request.scenePath.empty()) {
            m_request.scenePath = argument;
        } else {
            m_error = "unexpected argument '" + argument + "': one scene at a time";
        }
    }

    // The value of an option that may be given once; null after setting the
    // error when it is missing or the option came before.
    const char* once(const std::string& option, bool& seen) {
        if (seen) {
            m_error = option + " given twice";
            return nullptr;
        }
        seen = true;
        if (m_next >= m_argc) {
            m_error = option + " needs a value";
            return nullptr;
        }
        return m_argv[m_next++];
    }

    void checkComplete() {
        if (m_request.scenePath.empty())
            m_error = "no scene file given";
        else if (m_request.outputPath.empty())
            m_error = "no output file given (-o)";
        else if (!endsWithPng(m_request.outputPath))
            m_error = "the output file '" + m_request.outputPath + "' must end in .png";
    }

    const int m_argc;
    const char* const* const m_argv;
    int m_next = 1;
    RenderRequest m_request;
    std::string m_error;
    bool m_seenOutput = false;
    bool m_seenSize = false;
    bool m_seenBackground = false;
};

} // namespace

bool parseCommandLine(int argc, const char* const* argv, RenderRequest& request,
                      std::string& error) {
    return Parser(argc, argv).parse(request, error);
}
