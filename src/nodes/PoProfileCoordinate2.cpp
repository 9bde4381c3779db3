#include <Quillon/nodes/PoProfileCoordinate2.h>

PO_NODE_SOURCE(PoProfileCoordinate2, PoProfile)

PoProfileCoordinate2::PoProfileCoordinate2() {
    SO_NODE_CONSTRUCTOR(PoProfileCoordinate2);
    SO_NODE_ADD_EMPTY_MFIELD(point);
    SO_NODE_ADD_FIELD(closed, (FALSE));
}

PoProfileCoordinate2::~PoProfileCoordinate2() = default;

std::vector<SbVec2f> PoProfileCoordinate2::getProfilePoints(void) const {
    const SbVec2f* points = point.getValues(0);
    return std::vector<SbVec2f>(points, points + point.getNum());
}
