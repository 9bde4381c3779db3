#pragma once
#include <Inventor/errors/SoError.h>

#include <string>
#include <vector>

// Installs itself as the handler of the library's error poster and of the
// toolkit's debug errors for its lifetime, and records every message.
class ErrorRecorder {
public:
    ErrorRecorder();
    ~ErrorRecorder();
    ErrorRecorder(const ErrorRecorder&) = delete;
    ErrorRecorder& operator=(const ErrorRecorder&) = delete;

    const std::vector<std::string>& messages() const { return m_messages; }
    const std::vector<int>& severities() const { return m_severities; }
    bool contains(const std::string& fragment) const;
    void clear();

private:
    static void record(const SoError* error, void* data);

    std::vector<std::string> m_messages;
    std::vector<int> m_severities;
    SoErrorCB* m_previousLibraryHandler;
    void* m_previousLibraryData;
    SoErrorCB* m_previousToolkitHandler;
    void* m_previousToolkitData;
};
