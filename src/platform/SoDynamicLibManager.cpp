#include "platform/SoDynamicLibManager.h"

#include <Inventor/errors/SoDebugError.h>

#include <dlfcn.h>

#include <string>

namespace {
// Entry points are named in the decorated form of another platform's C++
// ABI: "?member@Class@@<signature>".  For static members without
// arguments (signatures ending in "XZ"), this is the same function as the
// Itanium-mangled "_ZN<len>Class<len>memberEv" that a module built here
// exports; other names are looked up as they are.
std::string itaniumNameOf(const std::string& symbol) {
    if (symbol.size() < 4 || symbol[0] != '?' || symbol.compare(symbol.size() - 2, 2, "XZ") != 0)
        return symbol;
    const size_t memberEnd = symbol.find('@', 1);
    const size_t classEnd = symbol.find("@@", memberEnd + 1);
    if (memberEnd == std::string::npos || classEnd == std::string::npos)
        return symbol;
    const std::string member = symbol.substr(1, memberEnd - 1);
    const std::string owner = symbol.substr(memberEnd + 1, classEnd - memberEnd - 1);
    if (member.empty() || owner.empty())
        return symbol;
    return "_ZN" + std::to_string(owner.size()) + owner + std::to_string(member.size()) + member +
           "Ev";
}
} // namespace

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
    void* address = nullptr;
    if (handle) {
        address = dlsym(handle, symbol);
        if (!address)
            address = dlsym(handle, itaniumNameOf(symbol).c_str());
    }
    if (handle)
        dlclose(handle);
    if (!address && mustExist)
        SoDebugError::post("SoDynamicLibManager::lookUpFunction", "symbol %s not found in %s",
                           symbol, libraryName);
    return address;
}
