#include <Quillon/nodes/PoCircularProfile.h>

PO_NODE_SOURCE(PoCircularProfile, PoProfile)

PoCircularProfile::PoCircularProfile() {
    SO_NODE_CONSTRUCTOR(PoCircularProfile);
    SO_NODE_ADD_FIELD(radius, (0.5f));
    SO_NODE_ADD_FIELD(numSides, (16));
}

PoCircularProfile::~PoCircularProfile() = default;

std::vector<SbVec2f> PoCircularProfile::getProfilePoints(void) const {
    return ellipsePoints(radius.getValue(), radius.getValue(), numSides.getValue());
}
