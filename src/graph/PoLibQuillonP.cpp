#include "graph/PoLibQuillonP.h"

#include <Quillon/PoQuillon.h>

#include "platform/FsFarspanApp.h"
#include "platform/SoDynamicLibManager.h"

#include <Inventor/errors/SoDebugError.h>

PoLibQuillonP* PoLibQuillonP::s_instance = nullptr;
int PoLibQuillonP::s_count = 0;
PoLibQuillonP::ClassesFunction PoLibQuillonP::s_initClasses = nullptr;
PoLibQuillonP::ClassesFunction PoLibQuillonP::s_exitClasses = nullptr;
PoLibQuillonP::TypeFunction PoLibQuillonP::s_sceneViewType = nullptr;

namespace {
const char* guiSystemWord() {
    if (FsFarspanApp::isRunningQt())
        return "Qt";
    if (FsFarspanApp::isRunningWx())
        return "Wx";
    return "Win";
}
} // namespace

SbString PoLibQuillonP::getModuleFileName() {
    SbString name(PoQuillon::getProductName());
    name += guiSystemWord();
    name += "D";
    name += SoDynamicLibManager::getLibrarySuffix();
    return name;
}

bool PoLibQuillonP::lookUpEntryPoints(const char* fileName) {
    s_initClasses = reinterpret_cast<ClassesFunction>(
        SoDynamicLibManager::lookUpFunction(fileName, "?initClasses@PoBaseView@@SAXXZ", true));
    s_exitClasses = reinterpret_cast<ClassesFunction>(
        SoDynamicLibManager::lookUpFunction(fileName, "?exitClasses@PoBaseView@@SAXXZ", true));
    s_sceneViewType = reinterpret_cast<TypeFunction>(SoDynamicLibManager::lookUpFunction(
        fileName, "?getClassTypeId@PoSceneView@@SA?AVSoType@@XZ", true));
    return s_initClasses && s_exitClasses && s_sceneViewType;
}

PoLibQuillonP* PoLibQuillonP::instance() {
    const SbString fileName = getModuleFileName();
    const bool loaded = SoDynamicLibManager::isLibraryLoaded(fileName.getString());
    if (!loaded && s_instance) {
        // The module was unloaded behind the library's back.
        delete s_instance;
        s_instance = nullptr;
    }
    if (s_instance) {
        ++s_count;
        return s_instance;
    }
    s_initClasses = nullptr;
    s_exitClasses = nullptr;
    s_sceneViewType = nullptr;
    const bool found = (loaded || SoDynamicLibManager::loadLibrary(fileName.getString(), true)) &&
                       lookUpEntryPoints(fileName.getString());
    if (!found) {
        SoDebugError::post("PoLibQuillonP::instance", "Could not load %s", fileName.getString());
        return nullptr;
    }
    s_instance = new PoLibQuillonP;
    return s_instance;
}

void PoLibQuillonP::finish() {
    if (s_count == 0)
        return;
    if (--s_count == 0) {
        delete s_instance;
        s_instance = nullptr;
    }
}

bool PoLibQuillonP::isAvailable() {
    return s_instance != nullptr;
}
