#pragma once
#include <Quillon/QuillonApi.h>
#include <Quillon/graph/PoAxis.h>

#include <Inventor/SbLinear.h>
#include <Inventor/fields/SoSFVec3f.h>

// An axis along one direction of space: from start to the coordinate end
// along the axis direction, showing the values gradStart to gradEnd (or
// its coordinates when both are equal).
//
// The type's first letter names the axis direction and the second the
// direction across it toward which graduations may be laid out; the
// graduations' "above" side (GRAD_ABOVE) is toward +second for XY, XZ and
// YZ and toward -second for YX, ZX and ZY.  So with the default positions
// and paths every axis reads the right way when its plane is seen in the
// usual way (XY from +Z, XZ from -Y, YZ from +X): XY is a bottom axis with
// its texts below, YX a left axis with horizontal texts on its left, and ZX
// or ZY a left vertical axis.  Relative sizes are fractions of the domain's
// extent along the axis direction.
class QUILLON_API PoCartesianAxis : public PoAxis {
    PO_KIT_ABSTRACT_HEADER(PoCartesianAxis);

public:
    enum Type { XY = 0, XZ = 1, YX = 2, YZ = 3, ZX = 4, ZY = 5 };

    SoSFVec3f start;
    SoSFFloat end;
    SoSFFloat gradStart;
    SoSFFloat gradEnd;
    SoSFEnum type;

protected:
    PoCartesianAxis();
    ~PoCartesianAxis() override;

    // The matrix that puts the axis's frame in place, with the domain's
    // extents along the axis direction and along the graduation direction.
    SbMatrix computeTransfo(float& axisExtent, float& gradExtent);

    // The type, XY when the field holds no type (with a warning).
    Type getAxisType(void) const;
    // The coordinate of start along the axis direction.
    float getStartCoord(void) const;
};
