#include <Quillon/nodes/PoProfile.h>

#include <Quillon/nodes/PoProfileElement.h>

#include <Inventor/actions/SoAction.h>

#include <cmath>

PO_NODE_ABSTRACT_SOURCE(PoProfile, PoNode)

PoProfile::PoProfile() {
    SO_NODE_CONSTRUCTOR(PoProfile);
}

PoProfile::~PoProfile() = default;

void PoProfile::doAction(SoAction* action) {
    PoProfileElement::set(action->getState(), this, this);
}

std::vector<SbVec2f> PoProfile::ellipsePoints(float radiusX, float radiusY, int numSides) {
    std::vector<SbVec2f> points;
    if (numSides < 3)
        return points;
    points.reserve(numSides);
    for (int i = 0; i < numSides; ++i) {
        const double angle = 2.0 * M_PI * i / numSides;
        points.emplace_back(static_cast<float>(radiusX * std::cos(angle)),
                            static_cast<float>(radiusY * std::sin(angle)));
    }
    return points;
}
