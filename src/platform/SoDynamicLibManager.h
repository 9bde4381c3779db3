#pragma once

// Loading of shared libraries by file name and lookup of their symbols.
class SoDynamicLibManager {
public:
    static const char* getLibrarySuffix();
    static bool isLibraryLoaded(const char* libraryName);
    // Loads the library; with loadNow the symbols are resolved at once.
    static bool loadLibrary(const char* libraryName, bool loadNow);
    // Returns the address of the symbol, or null; with mustExist a missing
    // symbol is reported through the toolkit's debug error.  A symbol
    // decorated as "?member@Class@@...XZ" (a static member function without
    // arguments) is also found under this platform's C++ name for it.
    static void* lookUpFunction(const char* libraryName, const char* symbol, bool mustExist);
};
