#include "platform/PfToolkit.h"

#include "platform/SoTextOutlineEnabledElement.h"

#include <Inventor/SoDB.h>
#include <Inventor/nodekits/SoNodeKit.h>

namespace {
int s_dbCount = 0;
int s_nodeKitCount = 0;
} // namespace

void PfToolkit::initDB() {
    if (s_dbCount++ == 0) {
        SoDB::init();
        if (SoTextOutlineEnabledElement::getClassTypeId() == SoType::badType())
            SoTextOutlineEnabledElement::initClass();
    }
}

void PfToolkit::finishDB() {
    if (s_dbCount > 0)
        --s_dbCount;
}

void PfToolkit::initNodeKit() {
    if (s_nodeKitCount++ == 0)
        SoNodeKit::init();
}

void PfToolkit::finishNodeKit() {
    if (s_nodeKitCount > 0)
        --s_nodeKitCount;
}

int PfToolkit::getDBInitCount() {
    return s_dbCount;
}

int PfToolkit::getNodeKitInitCount() {
    return s_nodeKitCount;
}
