#include <Quillon/graph/PoClassRegistration.h>

#include <Quillon/PoQuillon.h>
#include <Quillon/graph/PoDebugError.h>

#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoGetMatrixAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/actions/SoPickAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/threads/SbThreadMutex.h>

namespace {
SbThreadMutex& registrationMutex() {
    static SbThreadMutex mutex;
    return mutex;
}
} // namespace

void PoClassRegistration::lock() {
    registrationMutex().lock();
}

void PoClassRegistration::unlock() {
    registrationMutex().unlock();
}

void PoClassRegistration::ensureParent(const char* className, SoType parentType,
                                       const char* parentName, void (*parentInit)()) {
    if (parentType != SoType::badType())
        return;
    SbString method(className);
    method += "::initClass";
    SoDebugError::post(method.getString(), "%s initialized before parent class %s\n", className,
                       parentName);
    parentInit();
}

namespace {
void reportRemovalFailure(const char* className, SoType type) {
    SbString method(className);
    method += "::exitClass";
    SoDebugError::post(method.getString(),
                       "Unable to remove type (%s) for this class. Check exitClass() method is "
                       "implemented and is called only once.\n",
                       type.getName().getString());
}
} // namespace

bool PoClassRegistration::removeType(const char* className, SoType type) {
    // The bad type has a name of its own, which must never be removed.
    if (type != SoType::badType() && SoType::removeType(type.getName()))
        return true;
    reportRemovalFailure(className, type);
    return false;
}

bool PoClassRegistration::unregisterElement(const char* className, SoType type) {
    if (type != SoType::badType())
        return true;
    reportRemovalFailure(className, type);
    return false;
}

void PoClassRegistration::checkLibraryInitialized(const char* method, const char* what) {
    // The toolkit's poster: the library's own is not set up yet.
    if (!PoQuillon::isInitialized())
        SoDebugError::post(method,
                           "%s is used before PoQuillon::init(); call PoQuillon::init() once, "
                           "before creating any of the library's nodes and fields",
                           what);
}

void PoClassRegistration::enableElement(SoType type, int stackIndex) {
    SoCallbackAction::enableElement(type, stackIndex);
    SoGLRenderAction::enableElement(type, stackIndex);
    SoGetMatrixAction::enableElement(type, stackIndex);
    SoSearchAction::enableElement(type, stackIndex);
    SoGetBoundingBoxAction::enableElement(type, stackIndex);
    SoWriteAction::enableElement(type, stackIndex);
    SoHandleEventAction::enableElement(type, stackIndex);
    SoPickAction::enableElement(type, stackIndex);
    SoGetPrimitiveCountAction::enableElement(type, stackIndex);
}
