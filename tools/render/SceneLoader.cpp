#include "SceneLoader.h"

#include "ProbedRead.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/errors/SoReadError.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <regex>

namespace {

// Keeps the reader's messages instead of printing them while it lives.
class ReadErrorCapture {
public:
    ReadErrorCapture()
        : m_previousHandler(SoReadError::getHandlerCallback()),
          m_previousData(SoReadError::getHandlerData()) {
        SoReadError::setHandlerCallback(&ReadErrorCapture::record, this);
    }
    ~ReadErrorCapture() { SoReadError::setHandlerCallback(m_previousHandler, m_previousData); }
    ReadErrorCapture(const ReadErrorCapture&) = delete;
    ReadErrorCapture& operator=(const ReadErrorCapture&) = delete;

    // In the order posted; when the read failed, the first names the cause
    // and later ones follow from it.
    const std::vector<std::string>& messages() const { return m_messages; }

private:
    static void record(const SoError* error, void* data) {
        static_cast<ReadErrorCapture*>(data)->m_messages.push_back(
            error->getDebugString().getString());
    }

    SoErrorCB* m_previousHandler;
    void* m_previousData;
    std::vector<std::string> m_messages;
};

// Turns "Coin read error: <what>\n\tOccurred at line   4 in f.iv" into
// "<name>, line 4: <what>" (or "position" for binary files).
std::string describeReadError(const std::string& name, const std::string& message) {
    static const std::regex prefix(R"(^\s*\w+ read error:\s*)");
    static const std::regex where(R"(\s*Occurred at (line|position)\s+(\d+)[^\n]*)");
    std::string what = std::regex_replace(message, prefix, "");
    std::string location = name;
    std::smatch match;
    if (std::regex_search(what, match, where)) {
        location += ", " + match[1].str() + " " + match[2].str();
        what = match.prefix().str() + match.suffix().str();
    }
    what = std::regex_replace(what, std::regex(R"(\s+)"), " ");
    what = std::regex_replace(what, std::regex(R"(^ | $)"), "");
    if (what.empty())
        what = "the file is not a valid scene file";
    return location + ": " + what;
}

NodeRef<SoSeparator> readScene(const std::function<bool(SoInput&)>& openInput,
                               const std::string& name, std::string& error,
                               std::vector<std::string>* warnings) {
    const std::string refusal = probeSceneRead(openInput);
    if (!refusal.empty()) {
        error = describeReadError(name, refusal);
        return nullptr;
    }
    ReadErrorCapture capture;
    SoInput input;
    if (!openInput(input)) {
        error = "cannot open " + name;
        return nullptr;
    }
    NodeRef<SoSeparator> root = adoptNode(SoDB::readAll(&input));
    const std::vector<std::string>& messages = capture.messages();
    if (!root)
        error = describeReadError(name, messages.empty() ? std::string() : messages.front());
    else if (warnings)
        for (const std::string& message : messages)
            warnings->push_back(describeReadError(name, message));
    return root;
}

bool canOpen(const std::string& path, std::string& error) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        error = "cannot open " + path + ": it is a directory";
        return false;
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        error = "cannot open " + path + ": " + std::strerror(errno);
        return false;
    }
    std::fclose(file);
    return true;
}

} // namespace

NodeRef<SoSeparator> loadSceneFile(const std::string& path, std::string& error,
                                   std::vector<std::string>* warnings) {
    if (!canOpen(path, error))
        return nullptr;
    return readScene([&](SoInput& input) { return input.openFile(path.c_str()) == TRUE; }, path,
                     error, warnings);
}

NodeRef<SoSeparator> loadSceneText(const std::string& text, const std::string& name,
                                   std::string& error, std::vector<std::string>* warnings) {
    return readScene(
        [&](SoInput& input) {
            input.setBuffer(text.data(), text.size());
            return true;
        },
        name, error, warnings);
}
