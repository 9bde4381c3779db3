#pragma once
#include <Inventor/errors/SoError.h>
#include <Quillon/QuillonApi.h>

// The library's error poster.  Messages reach the installed handler as
// "Quillon error in <method>(): <message>" (or " warning in ", or ": in ").
class QUILLON_API PoDebugError : public SoError {
public:
    enum Severity { ERROR = 0, WARNING = 1, INFO = 2 };

    static void initClass(void);
    static SoType getClassTypeId(void);
    SoType getTypeId(void) const override;

    static void setHandlerCallback(SoErrorCB* const function, void* const data);
    static SoErrorCB* getHandlerCallback(void);
    static void* getHandlerData(void);

    Severity getSeverity(void) const { return m_severity; }

    static void post(const char* const methodName, const char* const format, ...)
        __attribute__((format(printf, 2, 3)));
    static void postWarning(const char* const methodName, const char* const format, ...)
        __attribute__((format(printf, 2, 3)));
    static void postInfo(const char* const methodName, const char* const format, ...)
        __attribute__((format(printf, 2, 3)));

protected:
    SoErrorCBPtr getHandler(void*& data) const override;

private:
    static void commonPost(Severity severity, const char* methodName, const char* message);

    static SoType s_classTypeId;
    static SoErrorCB* s_handler;
    static void* s_handlerData;
    Severity m_severity = ERROR;
};
