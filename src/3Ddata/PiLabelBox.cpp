#include "3Ddata/PiLabelBox.h"

#include <cmath>

namespace {
float cross(const SbVec2f& a, const SbVec2f& b) {
    return a[0] * b[1] - a[1] * b[0];
}

// +1 for counterclockwise corners, -1 for clockwise ones.
float orientation(const PiLabelBox& box) {
    float twiceArea = 0.0f;
    for (int i = 0; i < 4; ++i)
        twiceArea += cross(box.corners[i], box.corners[(i + 1) & 3]);
    return twiceArea < 0.0f ? -1.0f : 1.0f;
}

// The normal of edge i that points into the box.
SbVec2f inwardNormal(const PiLabelBox& box, int i, float sign) {
    const SbVec2f edge = box.corners[(i + 1) & 3] - box.corners[i];
    return SbVec2f(-edge[1] * sign, edge[0] * sign);
}

void project(const PiLabelBox& box, const SbVec2f& axis, float& low, float& high) {
    low = high = axis.dot(box.corners[0]);
    for (int i = 1; i < 4; ++i) {
        const float p = axis.dot(box.corners[i]);
        low = std::fmin(low, p);
        high = std::fmax(high, p);
    }
}

// Whether an edge normal of box separates the two boxes (touching
// separates).
bool hasSeparatingEdge(const PiLabelBox& box, const PiLabelBox& other) {
    const float sign = orientation(box);
    for (int i = 0; i < 4; ++i) {
        const SbVec2f axis = inwardNormal(box, i, sign);
        float low, high, otherLow, otherHigh;
        project(box, axis, low, high);
        project(other, axis, otherLow, otherHigh);
        if (!(high > otherLow && otherHigh > low))
            return true;
    }
    return false;
}
} // namespace

PiLabelBox PiLabelBox::around(const SbVec2f& anchor, const SbBox2f& frame, float angle) {
    const SbVec2f& low = frame.getMin();
    const SbVec2f& high = frame.getMax();
    const SbVec2f local[4] = {low, SbVec2f(high[0], low[1]), high, SbVec2f(low[0], high[1])};
    const float c = std::cos(angle), s = std::sin(angle);
    PiLabelBox box;
    for (int i = 0; i < 4; ++i)
        box.corners[i] =
            anchor + SbVec2f(c * local[i][0] - s * local[i][1], s * local[i][0] + c * local[i][1]);
    return box;
}

SbBox2f PiLabelBox::getBounds() const {
    SbBox2f bounds;
    for (const SbVec2f& corner : corners)
        bounds.extendBy(corner);
    return bounds;
}

bool PiLabelBox::contains(const SbVec2f& point) const {
    const float sign = orientation(*this);
    for (int i = 0; i < 4; ++i) {
        if (inwardNormal(*this, i, sign).dot(point - corners[i]) < 0.0f)
            return false;
    }
    return true;
}

bool PiLabelBox::overlaps(const PiLabelBox& other) const {
    return !hasSeparatingEdge(*this, other) && !hasSeparatingEdge(other, *this);
}

// Cyrus and Beck: the segment is cut by the inner half plane of each edge.
bool PiLabelBox::clipSegment(const SbVec2f& a, const SbVec2f& b, float& t0, float& t1) const {
    const float sign = orientation(*this);
    const SbVec2f direction = b - a;
    t0 = 0.0f;
    t1 = 1.0f;
    for (int i = 0; i < 4; ++i) {
        const SbVec2f normal = inwardNormal(*this, i, sign);
        const float distance = normal.dot(a - corners[i]);
        const float approach = normal.dot(direction);
        if (approach == 0.0f) {
            if (distance <= 0.0f)
                return false;
            continue;
        }
        const float t = -distance / approach;
        if (approach > 0.0f)
            t0 = std::fmax(t0, t);
        else
            t1 = std::fmin(t1, t);
        if (!(t1 > t0))
            return false;
    }
    return true;
}
