#pragma once

// Public entry of the library: call PoQuillon::init() once before building
// scene graphs with the library's nodes, and PoQuillon::finish() at the end.
class PoQuillon {
public:
    static void init(void);
    static void finish(void);
    static bool isInitialized(void);

    // The product word, "Quillon".
    static const char* getProductName(void);
    // major.minor.patch.build
    static const char* getVersion(void);
};
