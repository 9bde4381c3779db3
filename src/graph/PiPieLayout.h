#pragma once
#include <Inventor/SbLinear.h>

#include <vector>

// Lays the annotations of a pie chart out in the plane of its disc so that
// they do not overlap: inside the slices, and outside the disc with the
// leader lines that join them to their slices.
class PiPieLayout {
public:
    // A slice: the centre it turns about and the angle of its middle.
    struct Slice {
        SbVec2f center;
        float middle;
    };
    // Where an annotation box goes: its centre and its turn about +Z (the
    // box's width lies along the turned x), whether it has a place at all,
    // and for the outside, the leader from the slice's rim to the box.
    struct Placement {
        SbVec2f center{0.0f, 0.0f};
        float angle = 0.0f;
        bool placed = false;
        std::vector<SbVec2f> leader;
    };
    // An interval along a line, to be spread: where its middle would like
    // to be, its length, and where it ends up.
    struct Interval {
        float wanted;
        float length;
        float middle;
    };
    // How the outside annotations stand (the values of
    // PoPieChart::ExtAnnotPosition).
    enum Outside { RADIAL = 0, HORIZONTAL = 1, COLUMNS = 2, ROWS = 3, SQUARE = 4 };

    // A disc of that radius about center; outerRadius also holds the slices
    // pulled out, and gap is kept between neighbouring boxes.
    PiPieLayout(const SbVec2f& center, float radius, float outerRadius, float gap);

    // Boxes of the given sizes (width, height) centred at distance from
    // their slice's centre along its middle, read along it when radial.  A
    // box that would cover one placed before it moves along the middle,
    // within the disc; without a free place it is not placed.
    std::vector<Placement> placeInside(const std::vector<Slice>& slices,
                                       const std::vector<SbVec2f>& sizes, float distance,
                                       bool radial) const;

    // Boxes of the given sizes outside the disc: the leader runs from the
    // rim outwards by legOut, then sideways by legSide (not for RADIAL), and
    // stops boxGap before the box.
    std::vector<Placement> placeOutside(const std::vector<Slice>& slices,
                                        const std::vector<SbVec2f>& sizes, Outside outside,
                                        float legOut, float legSide, float boxGap) const;

    // Moves the intervals, in the order of their wanted middles, as little
    // as possible (least squares) so that they keep gap between each other
    // and stay within [low, high]; false when they cannot fit there, and
    // then they only keep apart.
    static bool spread(std::vector<Interval>& intervals, float gap, float low, float high);

    // Whether two boxes (centre, size, turn) overlap.
    static bool overlap(const SbVec2f& centerA, const SbVec2f& sizeA, float angleA,
                        const SbVec2f& centerB, const SbVec2f& sizeB, float angleB);

private:
    // Which side of the disc a slice's box goes to, and the box's place
    // along that side before spreading.
    enum Side { RIGHT = 0, TOP = 1, LEFT = 2, BOTTOM = 3 };
    Side sideOf(float middle, Outside outside) const;
    bool placeSide(Side side, const std::vector<int>& members, const std::vector<Slice>& slices,
                   const std::vector<SbVec2f>& sizes, Outside outside, float legOut, float legSide,
                   float boxGap, std::vector<Placement>& placements) const;
    // How far from the centre along x a box spanning those heights must
    // keep its inner edge not to cover the disc.
    float clearance(float low, float high) const;

    SbVec2f m_center;
    float m_radius;
    float m_outerRadius;
    float m_gap;
};
