#include <Quillon/graph/PoLinearAxis.h>

#include <Quillon/graph/PbDomain.h>

#include "support/ErrorRecorder.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoMatrixTransform.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// A linear axis that opens the base's protected steps to tests.
class OpenAxis : public PoLinearAxis {
public:
    using PoAxis::AxisAttr;
    using PoAxis::computeGradLimit;
    using PoAxis::computeGradList;
    using PoAxis::computeTickLen;
    using PoAxis::m_attr;
    using PoAxis::saveAxisAttr;
    using PoAxis::setDefaultAttr;
};

// The steps of the axis base, on a linear axis built in a scene.
class PoAxisTest : public SceneTest {
protected:
    OpenAxis* addAxis() {
        auto* axis = new OpenAxis;
        root->addChild(axis);
        return axis;
    }
};

// Only the positions and paths depend on the type; a value set by the user
// is left alone, and the add string's DEPEND is never resolved.
TEST_F(PoAxisTest, DependValuesResolvePerType) {
    OpenAxis* axis = addAxis();
    using A = PoAxis;
    for (int type = 0; type <= 5; ++type) {
        axis->saveAxisAttr();
        axis->setDefaultAttr(type);
        const OpenAxis::AxisAttr& a = axis->m_attr;
        const bool xy = type == 0;
        EXPECT_EQ(a.gradPosition, xy ? A::GRAD_BELOW : A::GRAD_ABOVE) << type;
        EXPECT_EQ(a.gradPath, xy ? A::PATH_RIGHT : A::PATH_DOWN) << type;
        EXPECT_EQ(a.titlePosition, xy ? A::TITLE_MIDDLE : A::TITLE_END) << type;
        EXPECT_EQ(a.titlePath, xy ? A::PATH_RIGHT : A::PATH_DOWN) << type;
        EXPECT_EQ(a.gridVisibility, A::VISIBILITY_OFF) << type;
    }
    axis->gradPath = A::PATH_UP;
    axis->saveAxisAttr();
    axis->setDefaultAttr(7);
    EXPECT_EQ(axis->m_attr.gradPosition, A::GRAD_DEPEND);
    axis->setDefaultAttr(0);
    EXPECT_EQ(axis->m_attr.gradPath, A::PATH_UP);
    EXPECT_EQ(axis->m_attr.gradAddStringVisibility, A::VISIBILITY_DEPEND);
}

TEST_F(PoAxisTest, GraduationLimitsLeaveTheMarginsAndNeverCross) {
    OpenAxis* axis = addAxis();
    const struct {
        PoAxis::MarginType type;
        float marginStart, marginEnd, start, end, first, last;
    } cases[] = {
        {PoAxis::REL_MARGIN, 0.1f, 0.2f, 0, 10, 1, 8},
        {PoAxis::REL_MARGIN, -0.1f, 0.2f, 10, 0, 9, 2},
        {PoAxis::FIXED_MARGIN, 1, 0.5f, 0, 10, 1, 9.5f},
        {PoAxis::FIXED_MARGIN, 1, 0.5f, 10, 0, 9, 0.5f},
        // Margins wider than the axis: the first limit joins the last.
        {PoAxis::REL_MARGIN, 0.6f, 0.6f, 0, 1, 0.4f, 0.4f},
        {PoAxis::FIXED_MARGIN, 3, 3, 5, 0, 3, 3},
    };
    for (const auto& c : cases) {
        axis->marginType = c.type;
        axis->marginStart = c.marginStart;
        axis->marginEnd = c.marginEnd;
        axis->saveAxisAttr();
        float first, last;
        axis->computeGradLimit(c.start, c.end, first, last);
        EXPECT_FLOAT_EQ(first, c.first) << c.start << " to " << c.end;
        EXPECT_FLOAT_EQ(last, c.last) << c.start << " to " << c.end;
    }
}

TEST_F(PoAxisTest, TickLengthsShrinkWithTheNumberOfGraduations) {
    OpenAxis* axis = addAxis();
    const struct {
        int grads;
        float main;
    } cases[] = {{1, 0.025f}, {11, 0.025f}, {12, 0.016f}, {24, 0.016f}, {25, 0.012f}};
    for (const auto& c : cases) {
        axis->saveAxisAttr();
        axis->computeTickLen(c.grads);
        EXPECT_FLOAT_EQ(axis->m_attr.tickMainLength, c.main) << c.grads;
        EXPECT_FLOAT_EQ(axis->m_attr.tickSubLength, 0.5f * c.main) << c.grads;
    }
    axis->tickMainLength = 0.05f;
    axis->tickSubLength = 0.01f;
    axis->saveAxisAttr();
    axis->computeTickLen(30);
    EXPECT_FLOAT_EQ(axis->m_attr.tickMainLength, 0.05f);
    EXPECT_FLOAT_EQ(axis->m_attr.tickSubLength, 0.01f);
    // The fields keep their values; the record has the computed ones.
    axis->tickMainLength = 0;
    traverse();
    float mainLength, subLength;
    PoAxis::Visibility visibility;
    PoAxis::TickPosition position;
    PoAxis::TickSubDef subDef;
    int numOrPeriod, first, last;
    axis->getTick(visibility, position, mainLength, subLength, subDef, numOrPeriod, first, last);
    EXPECT_FLOAT_EQ(mainLength, 0.025f);
    EXPECT_FLOAT_EQ(axis->tickMainLength.getValue(), 0.0f);
}

std::vector<float> coordsOf(int count, float first, float step) {
    std::vector<float> coords;
    for (int i = 0; i < count; ++i)
        coords.push_back(first + static_cast<float>(i) * step);
    return coords;
}

void expectCoords(const std::vector<float>& actual, const std::vector<float>& expected,
                  const char* what) {
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-5f) << what << " " << i;
}

TEST_F(PoAxisTest, MainAndSubGraduationsForBothDefinitions) {
    OpenAxis* axis = addAxis();
    const std::vector<float> all = coordsOf(6, 0.2f, 0.2f); // 0.2 to 1.2
    const std::vector<SbString> texts = {"a", "b", "c", "d", "e", "f"};
    const std::vector<std::string> allTexts = {"a", "b", "c", "d", "e", "f"},
                                   bcde = {"b", "c", "d", "e"};
    const auto PER = PoAxis::PERIOD_MAIN_TICK, NUM = PoAxis::NUM_SUB_TICK;
    const std::vector<float> halves = {0.0f, 0.1f, 0.3f, 0.5f, 0.7f, 0.9f, 1.1f, 1.3f};
    const std::vector<float> quarters = {
        -0.05f, 0.0f,  0.05f, 0.1f, 0.15f, 0.2f,  0.25f, 0.3f,  0.35f, 0.45f, 0.5f, 0.55f, 0.65f,
        0.7f,   0.75f, 0.85f, 0.9f, 0.95f, 1.05f, 1.1f,  1.15f, 1.2f,  1.25f, 1.3f, 1.35f};
    const struct {
        PoAxis::TickSubDef def;
        int period, first, last;
        float start, end, subStep;
        std::vector<float> mains, subs;
        std::vector<std::string> mainTexts;
        int workingPeriod;
    } cases[] = {
        {PER, 1, 1, 1, 0.2f, 1.2f, 0.2f, all, {}, allTexts, 1},
        {PER, 2, 1, 1, 0.2f, 1.2f, 0.2f, {0.2f, 0.6f, 1}, {0.4f, 0.8f, 1.2f}, {"a", "c", "e"}, 2},
        // The first candidate turns sub, and the last two.
        {PER, 1, 2, 3, 0.2f, 1.2f, 0.2f, {0.4f, 0.6f, 0.8f}, {0.2f, 1, 1.2f}, {"b", "c", "d"}, 1},
        // Sub graduations between the mains and on toward both limits.
        {NUM, 1, 1, 1, -0.07f, 1.37f, 0.2f, all, halves, allTexts, 1},
        {NUM, 3, 2, 2, -0.07f, 1.37f, 0.2f, {0.4f, 0.6f, 0.8f, 1}, quarters, bcde, 3},
        // Without a step the first two mains give the spacing.
        {NUM, 1, 5, 1, 0.95f, 1.25f, 0, {1.0f, 1.2f}, {1.1f}, {"e", "f"}, 1},
        // One main and no step: no sub graduations, the working count 0.
        {NUM, 4, 6, 1, 0.2f, 1.2f, 0, {1.2f}, {}, {"f"}, 0},
        {NUM, 0, 1, 1, 0.2f, 1.2f, 0.2f, all, {}, allTexts, 0},
    };
    for (const auto& c : cases) {
        axis->tickSubDef = c.def;
        axis->tickNumOrPeriod = c.period;
        axis->tickFirstGrad = c.first;
        axis->tickLastGrad = c.last;
        axis->saveAxisAttr();
        std::vector<SbString> mainTexts;
        axis->computeGradList(c.start, c.end, c.subStep, texts, all, mainTexts);
        const std::string what = "definition " + std::to_string(c.def) + " period " +
                                 std::to_string(c.period) + " first " + std::to_string(c.first);
        expectCoords(axis->getMainGradCoords(), c.mains, what.c_str());
        std::vector<float> subs = axis->getSubGradCoords();
        std::sort(subs.begin(), subs.end());
        expectCoords(subs, c.subs, what.c_str());
        std::vector<std::string> mainStrings;
        for (const SbString& t : mainTexts)
            mainStrings.emplace_back(t.getString());
        EXPECT_EQ(mainStrings, c.mainTexts) << what;
        EXPECT_EQ(axis->m_attr.tickNumOrPeriod, c.workingPeriod) << what;
    }
}

TEST_F(PoAxisTest, TooManySubGraduationsAreLeftOutWithAMessage) {
    ErrorRecorder errors;
    OpenAxis* axis = addAxis();
    axis->tickSubDef = PoAxis::NUM_SUB_TICK;
    axis->tickNumOrPeriod = 60000;
    axis->saveAxisAttr();
    std::vector<SbString> mainTexts;
    axis->computeGradList(0, 1, 0.2f, {"0", "0.2", "0.4"}, {0, 0.2f, 0.4f}, mainTexts);
    EXPECT_TRUE(axis->getSubGradCoords().empty());
    EXPECT_TRUE(errors.contains("sub graduations asked"));
}

// The points of the first coordinate node of a part.
std::vector<SbVec3f> pointsOf(PoAxis* axis, const char* part) {
    std::vector<SbVec3f> points;
    const std::vector<SoCoordinate3*> found = findAll<SoCoordinate3>(axis->getPart(part, FALSE));
    if (!found.empty())
        for (int i = 0; i < found.front()->point.getNum(); ++i)
            points.push_back(found.front()->point[i]);
    return points;
}

// Lowest and highest y of the points.
std::pair<float, float> heightRange(const std::vector<SbVec3f>& points) {
    std::pair<float, float> range(1e30f, -1e30f);
    for (const SbVec3f& p : points) {
        range.first = std::min(range.first, p[1]);
        range.second = std::max(range.second, p[1]);
    }
    return range;
}

TEST_F(PoAxisTest, TicksGridLinesAndArrowLieWhereTheirSettingsSay) {
    auto* domain = new PbDomain(0, 0, 10, 10);
    OpenAxis* axis = addAxis();
    axis->setDomain(domain);
    axis->end = 10;
    axis->tickMainLength = 0.1f; // one unit
    axis->gridVisibility = PoAxis::VISIBILITY_ON;
    axis->gridLengthGradSide = 0.2f;
    const struct {
        PoAxis::GradPosition position;
        PoAxis::TickPosition ticks;
        float tickLow, tickHigh, gridLow, gridHigh;
    } cases[] = {
        {PoAxis::GRAD_BELOW, PoAxis::TICK_GRAD_SIDE, -1, 0, -2, 10},
        {PoAxis::GRAD_BELOW, PoAxis::TICK_GRAD_OTHER_SIDE, 0, 1, -2, 10},
        {PoAxis::GRAD_ABOVE, PoAxis::TICK_GRAD_SIDE, 0, 1, -10, 2},
        {PoAxis::GRAD_ABOVE, PoAxis::TICK_ACROSS_AXIS, -0.5f, 0.5f, -10, 2},
    };
    for (const auto& c : cases) {
        axis->gradPosition = c.position;
        axis->tickPosition = c.ticks;
        traverse();
        const auto ticks = heightRange(pointsOf(axis, "mainGradTick"));
        EXPECT_FLOAT_EQ(ticks.first, c.tickLow) << c.position << " " << c.ticks;
        EXPECT_FLOAT_EQ(ticks.second, c.tickHigh) << c.position << " " << c.ticks;
        const auto grid = heightRange(pointsOf(axis, "mainGradGrid"));
        EXPECT_FLOAT_EQ(grid.first, c.gridLow) << c.position;
        EXPECT_FLOAT_EQ(grid.second, c.gridHigh) << c.position;
    }
    // The arrow lies beyond the end, also on an axis running backwards.
    const std::vector<SbVec3f> arrow = pointsOf(axis, "arrow");
    ASSERT_EQ(arrow.size(), 3u);
    EXPECT_TRUE(arrow[2].equals(SbVec3f(10.5f, 0, 0), 1e-5f));
    EXPECT_FLOAT_EQ(arrow[0][1] - arrow[1][1], 0.3f);
    axis->start = SbVec3f(10, 0, 0);
    axis->end = 0;
    traverse();
    EXPECT_TRUE(pointsOf(axis, "arrow")[2].equals(SbVec3f(-0.5f, 0, 0), 1e-5f));
    axis->arrowVisibility = PoAxis::VISIBILITY_OFF;
    traverse();
    EXPECT_EQ(axis->getPart("arrow", FALSE), nullptr);
    root->removeAllChildren();
    delete domain;
}

// The box of everything below a part, in the axis's own frame.
SbBox3f partBox(PoAxis* axis, const char* part) {
    SoGetBoundingBoxAction action(SbViewportRegion(1, 1));
    action.apply(axis->getPart(part, FALSE));
    return action.getBoundingBox();
}

TEST_F(PoAxisTest, TheTitleStandsBeyondTheGraduationTexts) {
    OpenAxis* axis = addAxis();
    axis->titleVisibility = PoAxis::VISIBILITY_ON;
    axis->titleString = "Time (s)";
    traverse();
    const SbBox3f texts = partBox(axis, "mainGradText");
    const SbBox3f title = partBox(axis, "title");
    EXPECT_LT(title.getMax()[1], texts.getMin()[1]);
    EXPECT_NEAR(title.getCenter()[0], 0.5f, 0.01f);
    axis->titlePosition = PoAxis::TITLE_END;
    axis->gradPosition = PoAxis::GRAD_ABOVE;
    traverse();
    EXPECT_GT(partBox(axis, "title").getMin()[1], partBox(axis, "mainGradText").getMax()[1]);
    EXPECT_NEAR(partBox(axis, "title").getCenter()[0], 1.0f, 0.01f);
    // No title without a string.
    axis->titleString = "";
    traverse();
    EXPECT_EQ(axis->getPart("title", FALSE), nullptr);
}

// The transform part maps the axis's own frame, along +X from the start
// coordinate, onto the axis in the scene.
TEST_F(PoAxisTest, TheTransformPutsTheAxisInPlaceForEveryType) {
    auto* domain = new PbDomain(0, 0, 0, 10, 5, 2);
    auto* axis = new PoLinearAxis;
    axis->setDomain(domain);
    root->addChild(axis);
    const SbVec3f start(1, 2, 3);
    const struct {
        PoCartesianAxis::Type type;
        SbVec3f axisDir, gradDir;
        float axisExtent, gradExtent;
    } cases[] = {
        {PoCartesianAxis::XY, SbVec3f(1, 0, 0), SbVec3f(0, 1, 0), 10, 5},
        {PoCartesianAxis::XZ, SbVec3f(1, 0, 0), SbVec3f(0, 0, 1), 10, 2},
        {PoCartesianAxis::YX, SbVec3f(0, 1, 0), SbVec3f(-1, 0, 0), 5, 10},
        {PoCartesianAxis::YZ, SbVec3f(0, 1, 0), SbVec3f(0, 0, 1), 5, 2},
        {PoCartesianAxis::ZX, SbVec3f(0, 0, 1), SbVec3f(-1, 0, 0), 2, 10},
        {PoCartesianAxis::ZY, SbVec3f(0, 0, 1), SbVec3f(0, -1, 0), 2, 5},
    };
    for (const auto& c : cases) {
        axis->type = c.type;
        axis->start = start;
        axis->end = 7;
        traverse();
        auto* transform = static_cast<SoMatrixTransform*>(axis->getPart("transform", FALSE));
        ASSERT_NE(transform, nullptr);
        const SbMatrix& m = transform->matrix.getValue();
        const float c0 = start.dot(c.axisDir);
        SbVec3f mapped;
        m.multVecMatrix(SbVec3f(c0, 0, 0), mapped);
        EXPECT_TRUE(mapped.equals(start, 1e-5f)) << "type " << c.type;
        m.multVecMatrix(SbVec3f(7, 0, 0), mapped);
        EXPECT_TRUE(mapped.equals(start + (7 - c0) * c.axisDir, 1e-5f)) << "type " << c.type;
        m.multVecMatrix(SbVec3f(c0, 1, 0), mapped);
        EXPECT_TRUE(mapped.equals(start + c.gradExtent / c.axisExtent * c.gradDir, 1e-5f))
            << "type " << c.type;
    }
    root->removeAllChildren();
    delete domain;
}

} // namespace
