#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoProfile.h>

#include <Inventor/fields/SoSFFloat.h>
#include <Inventor/fields/SoSFInt32.h>

// An ellipse of radii `radiusX` and `radiusY` drawn with `numSides` sides.
class QUILLON_API PoEllipticProfile : public PoProfile {
    PO_NODE_HEADER(PoEllipticProfile);

public:
    SoSFFloat radiusX;
    SoSFFloat radiusY;
    SoSFInt32 numSides;

    PoEllipticProfile();
    std::vector<SbVec2f> getProfilePoints(void) const override;

protected:
    ~PoEllipticProfile() override;
};
