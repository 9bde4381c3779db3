#include <Quillon/graph/PoLibraryReference.h>

#include <Quillon/graph/PoBase.h>

PoLibraryReference::PoLibraryReference() {
    PoBase::init();
}

PoLibraryReference::PoLibraryReference(const PoLibraryReference&) {
    PoBase::init();
}

PoLibraryReference::~PoLibraryReference() {
    PoBase::finish();
}
