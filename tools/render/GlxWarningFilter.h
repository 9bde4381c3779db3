#pragma once
#include <Inventor/errors/SoError.h>

// The toolkit asks for the current GLX context the first time it meets a
// new GL context and warns when there is none.  Offscreen contexts come from
// EGL, where that question has no answer and the warning means nothing, so
// while an instance lives it drops exactly that warning and hands every
// other toolkit message on to the handler that was installed before.
class GlxWarningFilter {
public:
    GlxWarningFilter();
    ~GlxWarningFilter();
    GlxWarningFilter(const GlxWarningFilter&) = delete;
    GlxWarningFilter& operator=(const GlxWarningFilter&) = delete;

    static bool isGlxContextWarning(const SbString& message);

private:
    static void filter(const SoError* error, void* data);

    SoErrorCB* m_previousHandler;
    void* m_previousData;
};
