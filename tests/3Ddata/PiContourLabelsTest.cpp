#include "3Ddata/PiContourLabels.h"
#include "3Ddata/PiBoxGrid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>
#include <vector>

// Where labels go along contour lines, and how the lines are cut around
// them.
namespace {

using Labels = PiContourLabels;
const float kPi = static_cast<float>(M_PI);

// Polylines given point by point, in the form the labelling takes.
struct Polylines {
    std::vector<SbVec3f> points;
    std::vector<Labels::Line> lines;

    void add(const std::vector<SbVec2f>& line, bool major = true, int text = 0) {
        const int start = static_cast<int>(points.size());
        for (const SbVec2f& p : line)
            points.emplace_back(p[0], p[1], 0.5f);
        const bool closed = line.front() == line.back();
        lines.push_back(Labels::Line{start, static_cast<int>(line.size()), closed, major, text});
    }
    void addStraight(const SbVec2f& from, const SbVec2f& to, int count, bool major = true) {
        std::vector<SbVec2f> line;
        for (int i = 0; i <= count; ++i)
            line.push_back(from + (to - from) * (static_cast<float>(i) / count));
        add(line, major);
    }
    void addCircle(const SbVec2f& centre, float radius, bool major = true) {
        std::vector<SbVec2f> line;
        for (int i = 0; i < 96; ++i) {
            const float a = 2 * kPi * static_cast<float>(i) / 96;
            line.push_back(centre + SbVec2f(std::cos(a), std::sin(a)) * radius);
        }
        line.push_back(line.front());
        add(line, major);
    }
};

// A label text 1 wide and 0.4 high, centred on its anchor.
const SbBox2f kFrame(-0.5f, -0.2f, 0.5f, 0.2f);

std::vector<Labels::Label> place(const Polylines& set, float gap,
                                 Labels::CrossStatus status = Labels::CROSS_CONTOUR,
                                 Labels::Path path = Labels::TANGENTIAL_PATH,
                                 const std::vector<SbVec2f>& polygon = {}) {
    Labels labels(set.points.data(), set.lines);
    labels.setTextFrames({kFrame});
    labels.setGap(gap);
    labels.setCrossStatus(status);
    labels.setPath(path);
    labels.setClipPolygon(polygon);
    return labels.computeContourLineAnnot();
}

SbVec2f plane(const SbVec3f& p) {
    return SbVec2f(p[0], p[1]);
}

// The segments that the pieces draw, with the line each comes from.
struct Segment {
    int line;
    SbVec2f a, b;
};
std::vector<Segment> drawnSegments(const Polylines& set, const std::vector<Labels::Piece>& pieces) {
    std::vector<Segment> segments;
    for (const Labels::Piece& piece : pieces) {
        std::vector<SbVec3f> points(piece.numSegments + 1);
        Labels::getPiecePoints(set.points.data(), set.lines[piece.line], piece, points.data());
        for (size_t i = 1; i < points.size(); ++i)
            segments.push_back(Segment{piece.line, plane(points[i - 1]), plane(points[i])});
    }
    return segments;
}

// Whether a drawn segment runs inside a box further than rounding the ends
// of cut pieces explains.
bool reachesInto(const PiLabelBox& box, const Segment& segment) {
    float t0, t1;
    return box.clipSegment(segment.a, segment.b, t0, t1) &&
           (t1 - t0) * (segment.b - segment.a).length() > 1e-4f;
}

std::vector<PiLabelBox> boxesOf(const std::vector<Labels::Label>& labels) {
    std::vector<PiLabelBox> boxes;
    for (const Labels::Label& label : labels)
        boxes.push_back(label.box);
    return boxes;
}

// Slanted lines and rings, closer than a label's height at first and then
// further apart; every third line is major.
Polylines denseMap() {
    Polylines set;
    for (int k = 0; k < 40; ++k) {
        const float y = k < 20 ? 0.15f * k : 3.0f + 0.6f * (k - 20);
        set.addStraight(SbVec2f(0, y), SbVec2f(20, y + 3), 80, k % 3 == 0);
    }
    for (int k = 0; k < 30; ++k)
        set.addCircle(SbVec2f(10, 22), k < 15 ? 1.0f + 0.2f * k : 4.0f + 0.6f * (k - 15),
                      k % 3 == 0);
    return set;
}

} // namespace

TEST(PiBoxGridTest, FindsEveryOverlappingItemOnceAsTestingAllWould) {
    std::mt19937 random(7);
    std::uniform_real_distribution<float> position(-2.0f, 12.0f), size(0.0f, 3.0f);
    const auto randomBox = [&] {
        const SbVec2f low(position(random), position(random));
        return SbBox2f(low, low + SbVec2f(size(random), size(random)));
    };
    // Bounds smaller than where items go: the border cells take the rest.
    PiBoxGrid grid(SbBox2f(0, 0, 10, 10), 0.7f);
    for (int i = 0; i < 300; ++i)
        EXPECT_EQ(grid.add(randomBox()), i);
    for (int q = 0; q < 200; ++q) {
        const SbBox2f query = randomBox();
        std::multiset<int> found, expected;
        grid.findOverlapping(query, [&](int item) {
            found.insert(item);
            return false;
        });
        for (int i = 0; i < grid.getNumItems(); ++i)
            if (PiBoxGrid::meets(grid.getBox(i), query))
                expected.insert(i);
        ASSERT_EQ(found, expected);
    }
}

TEST(PiLabelBoxTest, OverlapsAndCrossingsNeedTheInside) {
    const PiLabelBox box = PiLabelBox::around(SbVec2f(1, 1), kFrame, 0.0f);
    const PiLabelBox turned = PiLabelBox::around(SbVec2f(1, 1), kFrame, kPi / 4);
    EXPECT_TRUE(box.overlaps(turned));
    EXPECT_FALSE(box.overlaps(PiLabelBox::around(SbVec2f(2, 1), kFrame, 0.0f))); // touching
    EXPECT_TRUE(box.overlaps(PiLabelBox::around(SbVec2f(1.99f, 1.39f), kFrame, 0.0f)));
    // Turned by 45 degrees, its corner reaches (1 + 0.3 * 0.707..., ...) only.
    EXPECT_FALSE(turned.overlaps(PiLabelBox::around(SbVec2f(1.9f, 1.9f), kFrame, 0.0f)));

    float t0, t1;
    ASSERT_TRUE(box.clipSegment(SbVec2f(0, 1), SbVec2f(2, 1), t0, t1));
    EXPECT_FLOAT_EQ(t0, 0.25f);
    EXPECT_FLOAT_EQ(t1, 0.75f);
    EXPECT_FALSE(box.crosses(SbVec2f(0, 1.2f), SbVec2f(2, 1.2f))); // along the border
    EXPECT_FALSE(box.crosses(SbVec2f(0, 2), SbVec2f(2, 2)));
    EXPECT_TRUE(box.crosses(SbVec2f(1, 1), SbVec2f(1.1f, 1))); // wholly inside
    EXPECT_TRUE(box.contains(SbVec2f(1.5f, 1.2f)));
    EXPECT_FALSE(box.contains(SbVec2f(1.5f, 1.21f)));
}

TEST(PiContourLabelsTest, LabelsFollowTheGapAlongALine) {
    Polylines set;
    set.addStraight(SbVec2f(0, 0), SbVec2f(30, 0), 300);
    set.addStraight(SbVec2f(0, 5), SbVec2f(4, 5), 40);      // shorter than the gap
    set.addStraight(SbVec2f(0, 10), SbVec2f(1.9f, 10), 19); // shorter than two labels
    const std::vector<Labels::Label> labels = place(set, 8.0f);
    std::vector<float> along;
    for (const Labels::Label& label : labels)
        if (label.line == 0)
            along.push_back(label.anchor[0]);
    // Half a gap to the first, then a gap or at most one step more.
    ASSERT_EQ(along.size(), 3u);
    EXPECT_NEAR(along[0], 4.0f, 1e-4f);
    for (size_t i = 1; i < along.size(); ++i) {
        EXPECT_GE(along[i] - along[i - 1], 8.0f - 1e-4f);
        EXPECT_LT(along[i] - along[i - 1], 8.0f + 1.5f);
    }
    int onShort = 0;
    for (const Labels::Label& label : labels) {
        EXPECT_NE(label.line, 2);
        if (label.line == 1) {
            ++onShort;
            EXPECT_NEAR(label.anchor[0], 2.0f, 1e-4f);
            EXPECT_FLOAT_EQ(label.anchor[2], 0.5f);
        }
    }
    EXPECT_EQ(onShort, 1);
}

TEST(PiContourLabelsTest, TextFollowsTheLineAndNeverReadsUpsideDown) {
    const struct {
        SbVec2f from, to;
        Labels::Path path;
        float angle;
    } cases[] = {
        {SbVec2f(0, 0), SbVec2f(10, 10), Labels::TANGENTIAL_PATH, kPi / 4},
        {SbVec2f(10, 10), SbVec2f(0, 0), Labels::TANGENTIAL_PATH, kPi / 4},
        {SbVec2f(10, 0), SbVec2f(0, 10), Labels::TANGENTIAL_PATH, -kPi / 4},
        {SbVec2f(10, 0), SbVec2f(0, 0), Labels::TANGENTIAL_PATH, 0},
        {SbVec2f(0, 10), SbVec2f(0, 0), Labels::TANGENTIAL_PATH, kPi / 2},
        {SbVec2f(10, 0), SbVec2f(0, 10), Labels::HORIZONTAL_PATH, 0},
        {SbVec2f(10, 0), SbVec2f(0, 0), Labels::VERTICAL_PATH, kPi / 2},
    };
    for (const auto& c : cases) {
        Polylines set;
        set.addStraight(c.from, c.to, 50);
        const std::vector<Labels::Label> labels = place(set, 100.0f, Labels::CROSS_CONTOUR, c.path);
        ASSERT_EQ(labels.size(), 1u);
        EXPECT_NEAR(labels[0].angle, c.angle, 1e-4f) << c.path;
    }
}

TEST(PiContourLabelsTest, NoTwoLabelsOverlapOnADenseMap) {
    const Polylines set = denseMap();
    for (float gap : {0.0f, 2.0f}) {
        const std::vector<Labels::Label> labels = place(set, gap);
        EXPECT_GT(labels.size(), 30u);
        for (size_t i = 0; i < labels.size(); ++i)
            for (size_t j = 0; j < i; ++j)
                ASSERT_FALSE(labels[i].box.overlaps(labels[j].box)) << i << " " << j;
    }
}

TEST(PiContourLabelsTest, ForbiddenLinesCrossNoLabelOnceCut) {
    const Polylines set = denseMap();
    const struct {
        Labels::CrossStatus status;
        bool minorMayCross;
    } cases[] = {{Labels::CROSS_MINOR_CONTOUR, true}, {Labels::DONT_CROSS_CONTOUR, false}};
    for (const auto& c : cases) {
        const std::vector<Labels::Label> labels = place(set, 0.0f, c.status);
        ASSERT_GT(labels.size(), 10u);
        // Forbidden lines are the ones cut; they then keep out of every box.
        std::vector<char> clip;
        for (const Labels::Line& line : set.lines)
            clip.push_back(!c.minorMayCross || line.major);
        const std::vector<PiLabelBox> boxes = boxesOf(labels);
        int minorCrossings = 0;
        for (const Segment& s : drawnSegments(
                 set, Labels::clipContourLinesByAnnot(set.points.data(), set.lines, clip, boxes))) {
            for (const PiLabelBox& box : boxes) {
                if (!reachesInto(box, s))
                    continue;
                ASSERT_TRUE(c.minorMayCross && !set.lines[s.line].major) << c.status;
                ++minorCrossings;
            }
        }
        EXPECT_EQ(minorCrossings > 0, c.minorMayCross) << c.status;
    }
}

TEST(PiContourLabelsTest, ClippingPolygonKeepsLabelsInside) {
    const Polylines set = denseMap();
    const std::vector<SbVec2f> triangle{SbVec2f(2, 1), SbVec2f(18, 2), SbVec2f(9, 16)};
    const std::vector<Labels::Label> inside =
        place(set, 0.0f, Labels::CROSS_CONTOUR, Labels::TANGENTIAL_PATH, triangle);
    const std::vector<Labels::Label> all = place(set, 0.0f);
    ASSERT_GT(inside.size(), 5u);
    EXPECT_LT(inside.size(), all.size());
    const auto isInTriangle = [&](const SbVec2f& p) {
        for (int i = 0; i < 3; ++i) {
            const SbVec2f e = triangle[(i + 1) % 3] - triangle[i], d = p - triangle[i];
            if (e[0] * d[1] - e[1] * d[0] < 0)
                return false;
        }
        return true;
    };
    for (const Labels::Label& label : inside)
        for (const SbVec2f& corner : label.box.corners)
            EXPECT_TRUE(isInTriangle(corner));
    // One point, as by default, or two restrict nothing.
    for (const std::vector<SbVec2f>& few :
         {std::vector<SbVec2f>{SbVec2f(0, 0)}, std::vector<SbVec2f>{SbVec2f(0, 0), SbVec2f(1, 1)}})
        EXPECT_EQ(place(set, 0.0f, Labels::CROSS_CONTOUR, Labels::TANGENTIAL_PATH, few).size(),
                  all.size());
}

TEST(PiContourLabelsTest, LinesResumeAfterTheLabelsThatCutThem) {
    Polylines set;
    set.addStraight(SbVec2f(0, 0), SbVec2f(10, 0), 10);
    set.addCircle(SbVec2f(5, 5), 2.0f);
    set.addStraight(SbVec2f(0, 8), SbVec2f(10, 8), 10);
    // Boxes on the straight line, one near the circle's start, none on
    // the third line (not cut) which passes under the last box.
    const std::vector<PiLabelBox> boxes{
        PiLabelBox::around(SbVec2f(2.5f, 0), kFrame, 0.0f),
        PiLabelBox::around(SbVec2f(6.3f, 0), kFrame, 0.3f),
        PiLabelBox::around(SbVec2f(5 + 2 * std::cos(0.4f), 5 + 2 * std::sin(0.4f)), kFrame,
                           kPi / 2),
        PiLabelBox::around(SbVec2f(5, 8), kFrame, 0.0f),
    };
    const std::vector<Labels::Piece> pieces =
        Labels::clipContourLinesByAnnot(set.points.data(), set.lines, {1, 1, 0}, boxes);
    std::vector<int> perLine(3, 0);
    for (const Labels::Piece& piece : pieces)
        ++perLine[piece.line];
    // The closed circle cut once is one piece over its start.
    EXPECT_EQ(perLine, (std::vector<int>{3, 1, 1}));
    float straight = 0.0f;
    for (const Segment& s : drawnSegments(set, pieces)) {
        if (s.line == 0)
            straight += (s.b - s.a).length();
        for (const PiLabelBox& box : boxes)
            EXPECT_FALSE(s.line != 2 && reachesInto(box, s));
    }
    // Each label takes its width of the straight line, the turned one the
    // line's chord across it.
    const float turnedWidth = 1.0f / std::cos(0.3f);
    EXPECT_NEAR(straight, 10.0f - 1.0f - turnedWidth, 1e-3f);
}
