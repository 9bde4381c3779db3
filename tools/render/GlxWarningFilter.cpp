#include "GlxWarningFilter.h"

#include <Inventor/errors/SoDebugError.h>

#include <cstdio>
#include <cstring>

GlxWarningFilter::GlxWarningFilter()
    : m_previousHandler(SoDebugError::getHandlerCallback()),
      m_previousData(SoDebugError::getHandlerData()) {
    SoDebugError::setHandlerCallback(&GlxWarningFilter::filter, this);
}

GlxWarningFilter::~GlxWarningFilter() {
    SoDebugError::setHandlerCallback(m_previousHandler, m_previousData);
}

bool GlxWarningFilter::isGlxContextWarning(const SbString& message) {
    const char* text = message.getString();
    return std::strstr(text, "glxglue_isdirect") != nullptr &&
           std::strstr(text, "Couldn't get current GLX context") != nullptr;
}

void GlxWarningFilter::filter(const SoError* error, void* data) {
    if (isGlxContextWarning(error->getDebugString()))
        return;
    const auto* self = static_cast<const GlxWarningFilter*>(data);
    if (self->m_previousHandler)
        self->m_previousHandler(error, self->m_previousData);
    else
        std::fprintf(stderr, "%s\n", error->getDebugString().getString());
}
