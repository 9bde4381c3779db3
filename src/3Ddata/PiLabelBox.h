#pragma once
#include <Inventor/SbBox2f.h>
#include <Inventor/SbVec2f.h>

// The box of a label in the plane: a rectangle turned by the label's
// angle, or its image under the scaling of a domain, so any convex
// quadrangle given by its corners in counterclockwise order.  Boxes that
// only touch do not overlap, and a segment that only touches a box does
// not cross it.
struct PiLabelBox {
    SbVec2f corners[4];

    // A rectangle given in the label's own frame around its anchor (frame),
    // turned by angle (radians, counterclockwise) and moved to anchor.
    static PiLabelBox around(const SbVec2f& anchor, const SbBox2f& frame, float angle);

    SbBox2f getBounds() const;
    // Inside or on the border.
    bool contains(const SbVec2f& point) const;
    // Whether the insides of both boxes have a common part.
    bool overlaps(const PiLabelBox& other) const;
    // The part of the segment from a to b inside the box, as the parameters
    // t0 < t1 of its ends along the segment (0 at a, 1 at b); false when
    // the segment does not pass through the inside.
    bool clipSegment(const SbVec2f& a, const SbVec2f& b, float& t0, float& t1) const;
    bool crosses(const SbVec2f& a, const SbVec2f& b) const {
        float t0, t1;
        return clipSegment(a, b, t0, t1);
    }
};
