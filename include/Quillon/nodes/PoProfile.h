#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/SbVec2f.h>

#include <vector>

// The cross-section that curves drawn as tubes and extruded 3D texts sweep
// along their path: a polyline in the profile's own plane, centred on the
// path.
class QUILLON_API PoProfile : public PoNode {
    PO_NODE_ABSTRACT_HEADER(PoProfile);

public:
    virtual std::vector<SbVec2f> getProfilePoints(void) const = 0;
    // A closed profile joins its last point to its first.
    virtual SbBool isClosed(void) const { return TRUE; }

    void doAction(SoAction* action) override;

protected:
    PoProfile();
    ~PoProfile() override;

    // Points of an ellipse with the given radii, counter-clockwise from +x;
    // fewer than three sides give no points.
    static std::vector<SbVec2f> ellipsePoints(float radiusX, float radiusY, int numSides);
};
