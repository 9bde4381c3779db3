#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoProfile.h>

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>

// A circle of `radius` drawn with `numSides` sides.
class QUILLON_API PoCircularProfile : public PoProfile {
    PO_NODE_HEADER(PoCircularProfile);

public:
    SoSFFloat radius;
    SoSFInt32 numSides;

    PoCircularProfile();
    std::vector<SbVec2f> getProfilePoints(void) const override;

protected:
    ~PoCircularProfile() override;
};
