#include <Quillon/graph/PoCartesianAxis.h>

#include <Quillon/graph/PbDomain.h>

PO_KIT_ABSTRACT_SOURCE(PoCartesianAxis, PoAxis)

namespace {
// Per type: the axis direction, the graduation direction and whether the
// graduations' above side is toward that direction or away from it.
struct Frame {
    int axis;
    int grad;
    float gradSign;
};
const Frame s_frames[] = {{0, 1, 1.0f}, {0, 2, 1.0f},  {1, 0, -1.0f},
                          {1, 2, 1.0f}, {2, 0, -1.0f}, {2, 1, -1.0f}};

SbVec3f unit(int index, float sign) {
    SbVec3f v(0.0f, 0.0f, 0.0f);
    v[index] = sign;
    return v;
}
} // namespace

PoCartesianAxis::PoCartesianAxis() {
    SO_KIT_CONSTRUCTOR(PoCartesianAxis);
    SO_KIT_DEFINE_ENUM_VALUE(Type, XY);
    SO_KIT_DEFINE_ENUM_VALUE(Type, XZ);
    SO_KIT_DEFINE_ENUM_VALUE(Type, YX);
    SO_KIT_DEFINE_ENUM_VALUE(Type, YZ);
    SO_KIT_DEFINE_ENUM_VALUE(Type, ZX);
    SO_KIT_DEFINE_ENUM_VALUE(Type, ZY);
    SO_KIT_ADD_FIELD(start, (0.0f, 0.0f, 0.0f));
    SO_KIT_ADD_FIELD(end, (1.0f));
    SO_KIT_ADD_FIELD(gradStart, (0.0f));
    SO_KIT_ADD_FIELD(gradEnd, (0.0f));
    SO_KIT_ADD_FIELD(type, (XY));
    SO_KIT_SET_SF_ENUM_TYPE(type, Type);
    SO_KIT_INIT_INSTANCE();
    watchFields({&start, &end, &gradStart, &gradEnd, &type});
}

PoCartesianAxis::~PoCartesianAxis() = default;

PoCartesianAxis::Type PoCartesianAxis::getAxisType(void) const {
    return static_cast<Type>(checkedEnum(type, 6, XY));
}

float PoCartesianAxis::getStartCoord(void) const {
    return start.getValue()[s_frames[getAxisType()].axis];
}

// Shifts the axis's start coordinate to the origin, scales the graduation
// direction so that texts keep their proportions in the domain's
// transform, turns the frame into place and moves it to start.
SbMatrix PoCartesianAxis::computeTransfo(float& axisExtent, float& gradExtent) {
    const Frame& frame = s_frames[getAxisType()];
    float extents[3];
    getDomain()->getDelta(extents[0], extents[1], extents[2]);
    axisExtent = extents[frame.axis];
    gradExtent = extents[frame.grad];

    SbMatrix matrix, scale, turn, move;
    matrix.setTranslate(SbVec3f(-getStartCoord(), 0.0f, 0.0f));
    scale.setScale(SbVec3f(1.0f, gradExtent / axisExtent, 1.0f));
    const SbVec3f axis = unit(frame.axis, 1.0f);
    const SbVec3f grad = unit(frame.grad, frame.gradSign);
    const SbVec3f normal = axis.cross(grad);
    turn = SbMatrix(axis[0], axis[1], axis[2], 0.0f, grad[0], grad[1], grad[2], 0.0f, normal[0],
                    normal[1], normal[2], 0.0f, 0.0f, 0.0f, 0.0f, 1.0f);
    move.setTranslate(start.getValue());
    matrix.multRight(scale);
    matrix.multRight(turn);
    matrix.multRight(move);
    return matrix;
}
