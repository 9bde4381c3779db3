#include <Quillon/nodes/PoSquareProfile.h>

PO_NODE_SOURCE(PoSquareProfile, PoProfile)

PoSquareProfile::PoSquareProfile() {
    SO_NODE_CONSTRUCTOR(PoSquareProfile);
    SO_NODE_ADD_FIELD(size, (1.0f));
}

PoSquareProfile::~PoSquareProfile() = default;

std::vector<SbVec2f> PoSquareProfile::getProfilePoints(void) const {
    const float h = size.getValue() / 2;
    return {SbVec2f(-h, -h), SbVec2f(h, -h), SbVec2f(h, h), SbVec2f(-h, h)};
}
