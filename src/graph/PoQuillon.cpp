#include <Quillon/PoQuillon.h>

#include <Quillon/graph/PoBase.h>

#include "PoQuillonVersion.h"

void PoQuillon::init(void) {
    PoBase::init();
}

void PoQuillon::finish(void) {
    PoBase::finish();
}

bool PoQuillon::isInitialized(void) {
    return PoBase::isInitialized();
}

const char* PoQuillon::getProductName(void) {
    return "Quillon";
}

const char* PoQuillon::getVersion(void) {
    return QUILLON_VERSION_STRING;
}
