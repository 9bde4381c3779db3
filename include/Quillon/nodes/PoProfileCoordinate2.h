#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoProfile.h>

#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoSFBool.h>

// A profile given point by point; open unless `closed` is set.
class QUILLON_API PoProfileCoordinate2 : public PoProfile {
    PO_NODE_HEADER(PoProfileCoordinate2);

public:
    SoMFVec2f point;
    SoSFBool closed;

    PoProfileCoordinate2();
    std::vector<SbVec2f> getProfilePoints(void) const override;
    SbBool isClosed(void) const override { return closed.getValue(); }

protected:
    ~PoProfileCoordinate2() override;
};
