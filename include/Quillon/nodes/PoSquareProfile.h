#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoProfile.h>

#include <Inventor/fields/SoSFFloat.h>

// A square of side `size`, counter-clockwise from its lower-left corner.
class QUILLON_API PoSquareProfile : public PoProfile {
    PO_NODE_HEADER(PoSquareProfile);

public:
    SoSFFloat size;

    PoSquareProfile();
    std::vector<SbVec2f> getProfilePoints(void) const override;

protected:
    ~PoSquareProfile() override;
};
