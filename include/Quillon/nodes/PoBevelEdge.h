#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoSFBool.h>
#include <Inventor/fields/SoSFEnum.h>
#include <Inventor/fields/SoSFFloat.h>

// Bevels the edges of the bars and extruded shapes drawn below it: edges
// meeting at more than `angle` radians are cut with a bevel of `radius`,
// given in scene units or relative to the shape's size.
class QUILLON_API PoBevelEdge : public PoNode {
    PO_NODE_HEADER(PoBevelEdge);

public:
    enum RadiusFlag { ABSOLUTE_RADIUS = 0, RELATIVE_RADIUS = 1 };

    SoSFBool on;
    SoSFFloat radius;
    SoSFEnum radiusFlag;
    SoSFFloat angle;

    PoBevelEdge();
    void doAction(SoAction* action) override;

protected:
    ~PoBevelEdge() override;
};
