#include <Quillon/graph/PoDebugError.h>

#include <Quillon/PoQuillon.h>

#include <Inventor/SbString.h>
#include <cstdarg>
#include <cstdio>

SoType PoDebugError::s_classTypeId;
SoErrorCB* PoDebugError::s_handler = nullptr;
void* PoDebugError::s_handlerData = nullptr;

namespace {
// Messages are formatted into a buffer of this size; longer ones are cut.
constexpr size_t MESSAGE_BUFFER_SIZE = 10000;

const char* severityPrefix(PoDebugError::Severity severity) {
    switch (severity) {
    case PoDebugError::WARNING:
        return " warning in ";
    case PoDebugError::INFO:
        return ": in ";
    default:
        return " error in ";
    }
}
} // namespace

void PoDebugError::initClass(void) {
    if (s_classTypeId == SoType::badType())
        s_classTypeId =
            SoType::createType(SoError::getClassTypeId(), SbName("DebugError"), nullptr);
    s_handler = SoError::defaultHandlerCB;
    s_handlerData = nullptr;
}

SoType PoDebugError::getClassTypeId(void) {
    return s_classTypeId;
}

SoType PoDebugError::getTypeId(void) const {
    return s_classTypeId;
}

void PoDebugError::setHandlerCallback(SoErrorCB* const function, void* const data) {
    s_handler = function;
    s_handlerData = data;
}

SoErrorCB* PoDebugError::getHandlerCallback(void) {
    return s_handler;
}

void* PoDebugError::getHandlerData(void) {
    return s_handlerData;
}

SoErrorCBPtr PoDebugError::getHandler(void*& data) const {
    data = s_handlerData;
    return s_handler ? s_handler : SoError::defaultHandlerCB;
}

void PoDebugError::commonPost(Severity severity, const char* methodName, const char* message) {
    PoDebugError error;
    SbString text(PoQuillon::getProductName());
    text += severityPrefix(severity);
    text += methodName;
    text += "(): ";
    text += message;
    error.setDebugString(text.getString());
    error.m_severity = severity;
    // The toolkit's own dispatch goes to its base handler, so the installed
    // handler is called here.
    void* data = nullptr;
    SoErrorCB* handler = error.getHandler(data);
    handler(&error, data);
}

#define PO_DEBUG_ERROR_POST(_severity_)                                                            \
    char message[MESSAGE_BUFFER_SIZE];                                                             \
    va_list args;                                                                                  \
    va_start(args, format);                                                                        \
    vsnprintf(message, sizeof(message), format, args);                                             \
    va_end(args);                                                                                  \
    commonPost(_severity_, methodName, message)

void PoDebugError::post(const char* const methodName, const char* const format, ...) {
    PO_DEBUG_ERROR_POST(ERROR);
}

void PoDebugError::postWarning(const char* const methodName, const char* const format, ...) {
    PO_DEBUG_ERROR_POST(WARNING);
}

void PoDebugError::postInfo(const char* const methodName, const char* const format, ...) {
    PO_DEBUG_ERROR_POST(INFO);
}
