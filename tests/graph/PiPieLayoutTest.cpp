#include "graph/PiPieLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using Slices = std::vector<PiPieLayout::Slice>;
using Sizes = std::vector<SbVec2f>;

// A fan of n thin slices about the origin from angle from, each step wide.
Slices fan(int n, float from, float step) {
    Slices slices;
    for (int i = 0; i < n; ++i)
        slices.push_back({SbVec2f(0, 0), from + step * static_cast<float>(i)});
    return slices;
}

// How far the box (axis-aligned) keeps from the origin.
float distanceFromOrigin(const SbVec2f& center, const SbVec2f& size) {
    const float dx = std::max(0.0f, std::fabs(center[0]) - 0.5f * size[0]);
    const float dy = std::max(0.0f, std::fabs(center[1]) - 0.5f * size[1]);
    return std::sqrt(dx * dx + dy * dy);
}

TEST(PiPieLayoutTest, BoxesOverlapWhenNoAxisSeparatesThem) {
    const struct {
        SbVec2f a;
        float angleA;
        SbVec2f b;
        float angleB;
        bool overlap;
    } cases[] = {
        {SbVec2f(0, 0), 0, SbVec2f(0.5f, 0), 0, true},
        {SbVec2f(0, 0), 0, SbVec2f(1.01f, 0), 0, false},
        {SbVec2f(0, 0), 0, SbVec2f(0, 1.5f), 0, false},
        // Turned by 45 degrees, a unit square reaches 0.707 from its centre
        // along x, but its corners leave a free triangle beside another's.
        {SbVec2f(0, 0), float(M_PI / 4), SbVec2f(1.1f, 0), 0, true},
        {SbVec2f(0, 0), float(M_PI / 4), SbVec2f(1.25f, 0), 0, false},
        {SbVec2f(0, 0), float(M_PI / 4), SbVec2f(0.95f, 0.95f), float(M_PI / 4), false},
        {SbVec2f(0, 0), float(M_PI / 4), SbVec2f(0.6f, 0.6f), float(M_PI / 4), true},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PiPieLayout::overlap(c.a, SbVec2f(1, 1), c.angleA, c.b, SbVec2f(1, 1), c.angleB),
                  c.overlap)
            << c.b[0] << ", " << c.b[1];
}

TEST(PiPieLayoutTest, SpreadMovesIntervalsApartAsLittleAsPossible) {
    // Two intervals asking for the same place share the move.
    std::vector<PiPieLayout::Interval> two{{1, 1, 0}, {1, 1, 0}};
    EXPECT_TRUE(PiPieLayout::spread(two, 0.5f, -10, 10));
    EXPECT_FLOAT_EQ(two[0].middle, 0.25f);
    EXPECT_FLOAT_EQ(two[1].middle, 1.75f);
    // Apart already: nobody moves; the order of the input does not matter.
    std::vector<PiPieLayout::Interval> apart{{5, 1, 0}, {0, 1, 0}};
    EXPECT_TRUE(PiPieLayout::spread(apart, 0.5f, -10, 10));
    EXPECT_FLOAT_EQ(apart[0].middle, 5);
    EXPECT_FLOAT_EQ(apart[1].middle, 0);
    // A bound pushes the whole run back inside.
    std::vector<PiPieLayout::Interval> bounded{{9.8f, 1, 0}, {9.9f, 1, 0}, {0, 1, 0}};
    EXPECT_TRUE(PiPieLayout::spread(bounded, 0, -10, 10));
    EXPECT_FLOAT_EQ(bounded[1].middle, 9.5f);
    EXPECT_FLOAT_EQ(bounded[0].middle, 8.5f);
    EXPECT_FLOAT_EQ(bounded[2].middle, 0);
    // Too long for the bounds: they only keep apart.
    std::vector<PiPieLayout::Interval> tooMany(5, PiPieLayout::Interval{0, 1, 0});
    EXPECT_FALSE(PiPieLayout::spread(tooMany, 0, -1, 1));
    for (size_t i = 1; i < tooMany.size(); ++i)
        EXPECT_FLOAT_EQ(tooMany[i].middle - tooMany[i - 1].middle, 1);
}

TEST(PiPieLayoutTest, InsideBoxesMoveAlongTheirSliceOrAreLeftOut) {
    const PiPieLayout layout(SbVec2f(0, 0), 1, 1, 0.01f);
    for (bool radial : {false, true}) {
        const Slices slices = fan(30, 0, 0.05f);
        const Sizes sizes(slices.size(), SbVec2f(0.25f, 0.1f));
        const auto placements = layout.placeInside(slices, sizes, 0.6f, radial);
        // The first stands where asked, along its middle.
        ASSERT_TRUE(placements[0].placed);
        EXPECT_NEAR(placements[0].center.length(), 0.6f, 1e-5f);
        int placed = 0;
        for (size_t i = 0; i < placements.size(); ++i) {
            if (!placements[i].placed)
                continue;
            ++placed;
            const SbVec2f& c = placements[i].center;
            EXPECT_LT(c.length(), 1.0f);
            EXPECT_NEAR(std::atan2(c[1], c[0]), slices[i].middle, 1e-4f) << i;
            EXPECT_FLOAT_EQ(placements[i].angle, radial ? slices[i].middle : 0.0f);
            for (size_t j = 0; j < i; ++j)
                EXPECT_FALSE(placements[j].placed &&
                             PiPieLayout::overlap(c, sizes[i], placements[i].angle,
                                                  placements[j].center, sizes[j],
                                                  placements[j].angle))
                    << i << " covers " << j;
        }
        EXPECT_GT(placed, 5);
        EXPECT_LT(placed, 30);
    }
}

TEST(PiPieLayoutTest, OutsideBoxesNeitherOverlapNorCoverTheDisc) {
    // Crowded: many thin slices on the right of a disc pulled out to 1.2,
    // and a few around.
    Slices slices = fan(16, -0.6f, 0.08f);
    for (float angle : {1.6f, 2.5f, 3.3f, 4.4f})
        slices.push_back({SbVec2f(0, 0), angle});
    slices[3].center =
        SbVec2f(0.2f * std::cos(slices[3].middle), 0.2f * std::sin(slices[3].middle));
    const Sizes sizes(slices.size(), SbVec2f(0.4f, 0.12f));
    const PiPieLayout layout(SbVec2f(0, 0), 1, 1.2f, 0.02f);
    for (int outside = PiPieLayout::RADIAL; outside <= PiPieLayout::SQUARE; ++outside) {
        const auto placements = layout.placeOutside(
            slices, sizes, static_cast<PiPieLayout::Outside>(outside), 0.1f, 0.15f, 0.04f);
        for (size_t i = 0; i < placements.size(); ++i) {
            const PiPieLayout::Placement& p = placements[i];
            ASSERT_TRUE(p.placed) << outside;
            EXPECT_GE(distanceFromOrigin(p.center, sizes[i]), 1.2f) << outside << " " << i;
            for (size_t j = 0; j < i; ++j)
                EXPECT_FALSE(
                    PiPieLayout::overlap(p.center, sizes[i], 0, placements[j].center, sizes[j], 0))
                    << outside << ": " << i << " covers " << j;
            // The leader starts on the slice's rim and ends beside the box.
            ASSERT_EQ(p.leader.size(), outside == PiPieLayout::RADIAL ? 2u : 3u);
            EXPECT_NEAR((p.leader.front() - slices[i].center).length(), 1.0f, 1e-5f);
            EXPECT_NEAR(distanceFromOrigin(p.leader.back() - p.center, sizes[i]), 0.04f, 1e-4f)
                << outside << " " << i;
        }
    }
}

} // namespace
