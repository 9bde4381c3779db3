#include <Quillon/nodes/PoEllipticProfile.h>

PO_NODE_SOURCE(PoEllipticProfile, PoProfile)

PoEllipticProfile::PoEllipticProfile() {
    SO_NODE_CONSTRUCTOR(PoEllipticProfile);
    SO_NODE_ADD_FIELD(radiusX, (0.5f));
    SO_NODE_ADD_FIELD(radiusY, (0.25f));
    SO_NODE_ADD_FIELD(numSides, (16));
}

PoEllipticProfile::~PoEllipticProfile() = default;

std::vector<SbVec2f> PoEllipticProfile::getProfilePoints(void) const {
    return ellipsePoints(radiusX.getValue(), radiusY.getValue(), numSides.getValue());
}
