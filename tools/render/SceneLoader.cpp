#include "SceneLoader.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/errors/SoReadError.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
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

    // The first message, which names the cause; later ones follow from it.
    const std::string& firstMessage() const { return m_first; }

private:
    static void record(const SoError* error, void* data) {
        auto* self = static_cast<ReadErrorCapture*>(data);
        if (self->m_first.empty())
            self->m_first = error->getDebugString().getString();
    }

    SoErrorCB* m_previousHandler;
    void* m_previousData;
    std::string m_first;
};

// Turns "Coin read error: <what>\n\tOccurred at line   4 in f.iv" into
// "<name>, line 4: <what>".
std::string describeReadError(const std::string& name, const std::string& message) {
    static const std::regex prefix(R"(^\s*\w+ read error:\s*)");
    static const std::regex where(R"(\s*Occurred at line\s+(\d+)[^\n]*)");
    std::string what = std::regex_replace(message, prefix, "");
    std::string location = name;
    std::smatch match;
    if (std::regex_search(what, match, where)) {
        location += ", line " + match[1].str();
        what = match.prefix().str() + match.suffix().str();
    }
    what = std::regex_replace(what, std::regex(R"(\s+)"), " ");
    what = std::regex_replace(what, std::regex(R"(^ | $)"), "");
    if (what.empty())
        what = "the file is not a valid scene file";
    return location + ": " + what;
}

NodeRef<SoSeparator> readAll(SoInput& input, const std::string& name,
                             const ReadErrorCapture& capture, std::string& error) {
    NodeRef<SoSeparator> root = adoptNode(SoDB::readAll(&input));
    if (!root)
        error = describeReadError(name, capture.firstMessage());
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

NodeRef<SoSeparator> loadSceneFile(const std::string& path, std::string& error) {
    if (!canOpen(path, error))
        return nullptr;
    ReadErrorCapture capture;
    SoInput input;
    if (!input.openFile(path.c_str())) {
        error = "cannot open " + path;
        return nullptr;
    }
    return readAll(input, path, capture, error);
}

NodeRef<SoSeparator> loadSceneText(const std::string& text, const std::string& name,
                                   std::string& error) {
    ReadErrorCapture capture;
    SoInput input;
    input.setBuffer(text.data(), text.size());
    return readAll(input, name, capture, error);
}
