#pragma once
#include <Inventor/elements/SoInt32Element.h>

// Whether texts are outlined while rendering; off by default.
class SoTextOutlineEnabledElement : public SoInt32Element {
    SO_ELEMENT_HEADER(SoTextOutlineEnabledElement);

public:
    static void initClass();
    void init(SoState* state) override;

    static void set(SoState* state, SoNode* node, SbBool enabled);
    static SbBool get(SoState* state);
    static SbBool getDefault() { return FALSE; }

protected:
    ~SoTextOutlineEnabledElement() override;
};
