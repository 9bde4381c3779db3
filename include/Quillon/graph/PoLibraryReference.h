#pragma once
#include <Quillon/QuillonApi.h>

// Holds one reference on the library for the lifetime of the object.  Node
// kits derive from it before their toolkit base, so that the library (and
// the toolkit) are initialised before the toolkit part of a kit is built
// and stay initialised until it is gone.
class QUILLON_API PoLibraryReference {
protected:
    PoLibraryReference();
    ~PoLibraryReference();
    PoLibraryReference(const PoLibraryReference&);
    PoLibraryReference& operator=(const PoLibraryReference&) = default;
};
