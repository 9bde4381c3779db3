// Uses the library as an application would: every public header, a node
// kit of its own written with the kit helpers, property nodes read from a
// scene file, and thread-safe colours.  Prints "ok" when all went right.
#include <Quillon/Quillon.h>

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>

#include <cstdio>

class UserKit : public PoBase {
    PO_KIT_HEADER(UserKit);
    SO_KIT_CATALOG_ENTRY_HEADER(group);

public:
    SoSFFloat scale;
    int rebuildCount = 0;
    SbColor colorAtHalf;

    UserKit() {
        SO_KIT_CONSTRUCTOR(UserKit);
        SO_KIT_ADD_FIELD(scale, (1.0f));
        SO_KIT_ADD_CATALOG_ENTRY(group, SoGroup, TRUE, alternateRep, \x0, TRUE);
        SO_KIT_INIT_INSTANCE();
        watchFields({&scale});
    }

protected:
    ~UserKit() override = default;
    void rebuild(void) override {
        RebuildScope scope(this);
        ++rebuildCount;
        auto* shapes = new SoGroup;
        shapes->addChild(new SoCube);
        setAnyPart("group", shapes);
        if (const PbDataMapping* mapping = readElement<PoDataMappingElement>())
            mapping->getRGBColor(0.5f * scale.getValue(), colorAtHalf);
    }
};

PO_KIT_SOURCE(UserKit, PoBase)

namespace {
const char scene[] = "#Inventor V2.1 ascii\n"
                     "Separator { PoLinearDataMapping { color1 0 0 0 color2 1 0 0 } UserKit {} }";

bool check(bool condition, const char* what) {
    if (!condition)
        std::printf("failed: %s\n", what);
    return condition;
}
} // namespace

int main() {
    PoQuillon::init();
    UserKit::initClass();
    SoInput input;
    input.setBuffer(scene, sizeof scene - 1);
    SoSeparator* root = SoDB::readAll(&input);
    bool ok = check(root != nullptr, "reading the scene");
    if (ok) {
        root->ref();
        auto* kit = static_cast<UserKit*>(root->getChild(1));
        SoCallbackAction action;
        action.apply(root);
        ok = check(kit->rebuildCount == 1, "first rebuild") &&
             check(kit->getPart("group", FALSE) != nullptr, "the kit's own part") &&
             check(kit->colorAtHalf == SbColor(0.5f, 0, 0), "colour from the state");
        kit->scale = 2.0f;
        action.apply(root);
        ok = ok && check(kit->rebuildCount == 2, "rebuild after a field change") &&
             check(kit->colorAtHalf == SbColor(1, 0, 0), "colour after the change");
        root->unref();
    }
    UserKit::exitClass();
    PoQuillon::finish();
    if (ok)
        std::printf("ok\n");
    return ok ? 0 : 1;
}
