#pragma once
#include <Inventor/SoType.h>

// Classes that tests derive from the library's classes are registered for
// the running test only.  A class left registered after the library's full
// finish hangs under a removed parent type, which the toolkit's actions
// cannot walk; so every such class is unregistered when its test ends.
namespace TestClassRegistration {

void registerForThisTest(SoType (*getClassTypeId)(), void (*initClass)(), void (*exitClass)());

template <typename Class> void registerForThisTest() {
    registerForThisTest(&Class::getClassTypeId, &Class::initClass, &Class::exitClass);
}

} // namespace TestClassRegistration
