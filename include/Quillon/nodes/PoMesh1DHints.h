#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/nodes/PoNode.h>

#include <Inventor/fields/SoSFEnum.h>

// Tells the kits below how to draw the points of a line mesh: joined by
// straight segments, by steps along x or y first, or by a smooth curve.
class QUILLON_API PoMesh1DHints : public PoNode {
    PO_NODE_HEADER(PoMesh1DHints);

public:
    enum GeomInterpretation { AS_IS = 0, STAIRS_X = 1, STAIRS_Y = 2, SMOOTH = 3 };

    SoSFEnum geomInterpretation;

    PoMesh1DHints();
    void doAction(SoAction* action) override;

protected:
    ~PoMesh1DHints() override;
};
