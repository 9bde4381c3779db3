#include "platform/SoDynamicLibManager.h"

#include <Inventor/errors/SoDebugError.h>

#include <dlfcn.h>

const char* SoDynamicLibManager::getLibrarySuffix() {
    return ".so";
}

bool SoDynamicLibManager::isLibraryLoaded(const char* libraryName) {
    if (!libraryName)
        return false;
    void* handle = dlopen(libraryName, RTLD_LAZY | RTLD_NOLOAD);
    if (!handle)
        return false;
    dlclose(handle);
    return true;
}

bool SoDynamicLibManager::loadLibrary(const char* libraryName, bool loadNow) {
    if (!libraryName)
        return false;
    // The handle is kept open on purpose: a loaded module stays loaded.
    return dlopen(libraryName, (loadNow ? RTLD_NOW : RTLD_LAZY) | RTLD_GLOBAL) != nullptr;
}

void* SoDynamicLibManager::lookUpFunction(const char* libraryName, const char* symbol,
                                          bool mustExist) {
    if (!libraryName || !symbol)
        return nullptr;
    void* handle = dlopen(libraryName, RTLD_LAZY | RTLD_NOLOAD);
    void* address = handle ? dlsym(handle, symbol) : nullptr;
    if (handle)
        dlclose(handle);
    if (!address && mustExist)
        SoDebugError::post("SoDynamicLibManager::lookUpFunction", "symbol %s not found in %s",
                           symbol, libraryName);
    return address;
}
