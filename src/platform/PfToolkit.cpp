#include "platform/PfToolkit.h"

#include <Inventor/SoDB.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoTextOutlineEnabledElement.h>
#include <Inventor/nodekits/SoNodeKit.h>

namespace {
int s_dbCount = 0;
int s_nodeKitCount = 0;
} // namespace

void PfToolkit::initDB() {
    if (s_dbCount++ != 0)
        return;
    SoDB::init();
    // The toolkit has the text-outline element but no action carries it;
    // renderings read it to outline their texts.
    SoGLRenderAction::enableElement(SoTextOutlineEnabledElement::getClassTypeId(),
                                    SoTextOutlineEnabledElement::getClassStackIndex());
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
