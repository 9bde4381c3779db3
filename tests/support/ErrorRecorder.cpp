#include "support/ErrorRecorder.h"

#include <Quillon/graph/PoDebugError.h>

#include <Inventor/errors/SoDebugError.h>

ErrorRecorder::ErrorRecorder()
    : m_previousLibraryHandler(PoDebugError::getHandlerCallback()),
      m_previousLibraryData(PoDebugError::getHandlerData()),
      m_previousToolkitHandler(SoDebugError::getHandlerCallback()),
      m_previousToolkitData(SoDebugError::getHandlerData()) {
    PoDebugError::setHandlerCallback(&ErrorRecorder::record, this);
    SoDebugError::setHandlerCallback(&ErrorRecorder::record, this);
}

ErrorRecorder::~ErrorRecorder() {
    PoDebugError::setHandlerCallback(m_previousLibraryHandler, m_previousLibraryData);
    SoDebugError::setHandlerCallback(m_previousToolkitHandler, m_previousToolkitData);
}

bool ErrorRecorder::contains(const std::string& fragment) const {
    for (const std::string& message : m_messages)
        if (message.find(fragment) != std::string::npos)
            return true;
    return false;
}

void ErrorRecorder::clear() {
    m_messages.clear();
    m_severities.clear();
}

void ErrorRecorder::record(const SoError* error, void* data) {
    auto* self = static_cast<ErrorRecorder*>(data);
    self->m_messages.emplace_back(error->getDebugString().getString());
    int severity = -1;
    if (error->isOfType(PoDebugError::getClassTypeId()))
        severity = static_cast<const PoDebugError*>(error)->getSeverity();
    else if (error->isOfType(SoDebugError::getClassTypeId()))
        severity = static_cast<const SoDebugError*>(error)->getSeverity();
    self->m_severities.push_back(severity);
}
