#pragma once
#include <Quillon/QuillonApi.h>

// Public entry of the library: call PoQuillon::init() once before building
// scene graphs with the library's nodes, and PoQuillon::finish() at the end.
// Calls are counted; the finish that brings the count back to 0 unregisters
// every class of the library, and a later init() registers them again.  An
// application's own classes derived from the library's must be unregistered
// (exitClass) before that last finish: the toolkit cannot walk a type whose
// parent type was removed.
class QUILLON_API PoQuillon {
public:
    static void init(void);
    static void finish(void);
    static bool isInitialized(void);

    // The product word, "Quillon".
    static const char* getProductName(void);
    // major.minor.patch.build
    static const char* getVersion(void);
};
