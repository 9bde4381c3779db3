#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PoCurve.h>

#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoPointSet.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using Points = std::vector<SbVec2f>;

class PoCurveTest : public SceneTest {
protected:
    PoCurve* addCurve(const Points& points, PoCurve::CurveRep rep = PoCurve::CURVE_POLYLINE) {
        auto* curve = new PoCurve(static_cast<int>(points.size()), points.data(), rep);
        root->addChild(curve);
        return curve;
    }
    // The coordinates in a part, in the plane.
    static Points partPoints(PoCurve* curve, const char* part) {
        Points points;
        for (SoCoordinate3* coordinates : findAll<SoCoordinate3>(curve->getPart(part, FALSE)))
            for (int i = 0; i < coordinates->point.getNum(); ++i)
                points.emplace_back(coordinates->point[i][0], coordinates->point[i][1]);
        return points;
    }
    static void expectPoints(const Points& actual, const Points& expected,
                             const std::string& what) {
        ASSERT_EQ(actual.size(), expected.size()) << what;
        for (size_t i = 0; i < actual.size(); ++i) {
            EXPECT_NEAR(actual[i][0], expected[i][0], 1e-5f) << what << " point " << i;
            EXPECT_NEAR(actual[i][1], expected[i][1], 1e-5f) << what << " point " << i;
        }
    }
};

SbVec2f direction(const SbVec2f& from, const SbVec2f& to) {
    SbVec2f d = to - from;
    d.normalize();
    return d;
}

TEST_F(PoCurveTest, EachRepresentationGeneratesItsPointsWithoutRepeats) {
    const Points points = {{0, 0}, {1, 1}, {2, 1}, {3, 0}};
    const struct {
        PoCurve::CurveRep rep;
        Points expected;
    } cases[] = {
        {PoCurve::CURVE_POLYLINE, points},
        {PoCurve::CURVE_STAIRS_X, {{0, 0}, {1, 0}, {1, 1}, {2, 1}, {3, 1}, {3, 0}}},
        {PoCurve::CURVE_STAIRS_Y, {{0, 0}, {0, 1}, {1, 1}, {2, 1}, {2, 0}, {3, 0}}},
        {PoCurve::CURVE_HISTO_X,
         {{0, 0}, {0.5f, 0}, {0.5f, 1}, {1.5f, 1}, {2.5f, 1}, {2.5f, 0}, {3, 0}}},
        {PoCurve::CURVE_HISTO_Y,
         {{0, 0}, {0, 0.5f}, {1, 0.5f}, {1, 1}, {2, 1}, {2, 0.5f}, {3, 0.5f}, {3, 0}}},
        {PoCurve::CURVE_STAIRS_2X,
         {{-0.5f, 0}, {0.5f, 0}, {0.5f, 1}, {1.5f, 1}, {2.5f, 1}, {2.5f, 0}, {3.5f, 0}}},
        {PoCurve::CURVE_STAIRS_2Y,
         {{0, -0.5f}, {0, 0.5f}, {1, 0.5f}, {1, 1}, {2, 1}, {2, 0.5f}, {3, 0.5f}, {3, -0.5f}}},
    };
    PoCurve* curve = addCurve(points);
    for (const auto& c : cases) {
        curve->curveRep = c.rep;
        traverse();
        expectPoints(partPoints(curve, "curvePoint"), c.expected, std::to_string(c.rep));
    }
    curve->curveRep = PoCurve::CURVE_NONE;
    traverse();
    EXPECT_EQ(curve->getPart("curvePoint", FALSE), nullptr);
    // A repeated point vanishes from the polyline too.
    curve->curveRep = PoCurve::CURVE_POLYLINE;
    curve->point.set1Value(4, SbVec2f(3, 0));
    traverse();
    EXPECT_EQ(partPoints(curve, "curvePoint").size(), 4u);
}

TEST_F(PoCurveTest, TheSmoothCurvePassesThroughItsPoints) {
    const Points points = {{0, 0}, {1, 3}, {2.5f, -1}, {4, 2}, {5, 2}};
    PoCurve* curve = addCurve(points, PoCurve::CURVE_SMOOTH);
    traverse();
    const Points smooth = partPoints(curve, "curvePoint");
    ASSERT_EQ(smooth.size(), (points.size() - 1) * 10 + 1);
    for (size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(smooth[10 * i][0], points[i][0], 1e-5f) << i;
        EXPECT_NEAR(smooth[10 * i][1], points[i][1], 1e-5f) << i;
    }
    // Natural ends: no second derivative at the first point.  On a cubic
    // sampled at step h, h^2 f''(0) is the second difference less the third.
    const SbVec2f second = smooth[2] - 2.0f * smooth[1] + smooth[0];
    const SbVec2f third = smooth[3] - 3.0f * smooth[2] + 3.0f * smooth[1] - smooth[0];
    EXPECT_LT((second - third).length(), 1e-4f);
    EXPECT_GT(second.length(), 0.01f);

    // A single point yields that point.
    curve->point.setValue(SbVec2f(2, 3));
    traverse();
    expectPoints(partPoints(curve, "curvePoint"), {{2, 3}}, "single point");
    EXPECT_EQ(findAll<SoPointSet>(curve->getPart("curvePoint", FALSE)).size(), 1u);
}

// The corner of a square closed on itself: the periodic spline arrives and
// leaves in one direction; an open spline through the same points (the
// last one moved a little) turns sharply there.
TEST_F(PoCurveTest, AClosedSmoothCurveHasNoCorner) {
    const Points square = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
    PoCurve* curve = addCurve(square, PoCurve::CURVE_SMOOTH);
    traverse();
    Points smooth = partPoints(curve, "curvePoint");
    ASSERT_EQ(smooth.size(), 41u);
    auto turnAtStart = [](const Points& p) {
        const SbVec2f arriving = direction(p[p.size() - 2], p.back());
        const SbVec2f leaving = direction(p[0], p[1]);
        return std::acos(std::min(1.0f, arriving.dot(leaving)));
    };
    EXPECT_LT(turnAtStart(smooth), 0.25f);
    // By symmetry the tangent there points along (1, -1).
    const SbVec2f tangent = direction(smooth[smooth.size() - 2], smooth[1]);
    EXPECT_NEAR(tangent.dot(SbVec2f(1, -1)) / std::sqrt(2.0f), 1.0f, 1e-4f);

    curve->point.set1Value(4, SbVec2f(0, 1e-3f));
    traverse();
    EXPECT_GT(turnAtStart(partPoints(curve, "curvePoint")), 0.8f);
}

TEST_F(PoCurveTest, TheFillingIsSplitWhereTheCurveCrossesTheThreshold) {
    PoCurve* curve = addCurve({{0, 1}, {2, -1}, {3, -1}});
    curve->isCurveFilled = TRUE;
    traverse();
    // Two triangles meeting at the crossing, then a rectangle below.
    expectPoints(
        partPoints(curve, "curveFilling"),
        {{0, 0}, {0, 1}, {1, 0}, {1, 0}, {2, -1}, {2, 0}, {2, 0}, {2, -1}, {3, -1}, {3, 0}},
        "filling");
    const std::vector<SoFaceSet*> faces = findAll<SoFaceSet>(curve->getPart("curveFilling", FALSE));
    ASSERT_EQ(faces.size(), 1u);
    const std::vector<int32_t> counts(faces[0]->numVertices.getValues(0),
                                      faces[0]->numVertices.getValues(0) +
                                          faces[0]->numVertices.getNum());
    EXPECT_EQ(counts, (std::vector<int32_t>{3, 3, 4}));

    // Filled up to a threshold above: the segment touching it at its start
    // gives a triangle; a vertical segment adds nothing.
    curve->fillingThreshold = 1;
    curve->point.set1Value(3, SbVec2f(3, 0));
    traverse();
    const Points filled = partPoints(curve, "curveFilling");
    EXPECT_EQ(filled.size(), 3u + 4u);
}

// A zigzag, so that the segment bracketing an x decides its y.
TEST_F(PoCurveTest, FiltersSelectTheMarkedAndRaisedPoints) {
    PoCurve* curve = addCurve({{0, 0}, {1, 2}, {2, 0}, {3, 2}});
    curve->raiseThreshold = -1;
    const struct {
        PoCurve::FilterType type;
        Points expected;
    } cases[] = {
        {PoCurve::INACTIVE, {}},
        {PoCurve::ALL_POINTS, {{0, 0}, {1, 2}, {2, 0}, {3, 2}}},
        {PoCurve::INDEX_PERIOD, {{0, 0}, {2, 0}}},
        {PoCurve::INDEX_LIST, {{3, 2}, {0, 0}}},
        {PoCurve::X_PERIOD, {{0, 0}, {0.75f, 1.5f}, {1.5f, 1}, {2.25f, 0.5f}, {3, 2}}},
        {PoCurve::X_LIST, {{0.5f, 1}, {2.5f, 1}}},
    };
    curve->raiseIndexPeriod = 2;
    curve->raiseIndexList.setValues(0, 4, std::vector<int32_t>{3, 7, -1, 0}.data());
    curve->raiseXPeriod = 0.75f;
    curve->raiseXList.setValues(0, 3, std::vector<float>{0.5f, 5, 2.5f}.data());
    for (const auto& c : cases) {
        curve->raiseFilterType = c.type;
        traverse();
        Points expected;
        for (const SbVec2f& p : c.expected) {
            expected.push_back(p);
            expected.emplace_back(p[0], -1.0f);
        }
        expectPoints(partPoints(curve, "raisePoint"), expected, std::to_string(c.type));
    }
    // Markers take the same filters from their own fields.
    curve->markerFilterType = PoCurve::X_LIST;
    curve->markerXList.setValues(0, 3, std::vector<float>{0.5f, 5, 2.5f}.data());
    curve->markerString = "+";
    traverse();
    EXPECT_EQ(textsBelow(curve->getPart("marker", FALSE)), (std::vector<std::string>{"+", "+"}));
}

TEST_F(PoCurveTest, MarkersStandCentredOnTheirPointsAtTheFontsSize) {
    auto* domain = new PbDomain(0, 0, 10, 10);
    PoCurve* curve = addCurve({{2, 3}, {6, 5}});
    curve->setDomain(domain);
    curve->markerFilterType = PoCurve::ALL_POINTS;
    traverse();
    SoGroup* markers = static_cast<SoGroup*>(curve->getPart("marker", FALSE));
    ASSERT_NE(markers, nullptr);
    ASSERT_EQ(markers->getNumChildren(), 2);
    SoGetBoundingBoxAction box(SbViewportRegion(100, 100));
    const SbVec2f expected[] = {{2, 3}, {6, 5}};
    for (int i = 0; i < 2; ++i) {
        box.apply(markers->getChild(i));
        const SbVec3f centre = box.getBoundingBox().getCenter();
        EXPECT_NEAR(centre[0], expected[i][0], 0.01f) << i;
        EXPECT_NEAR(centre[1], expected[i][1], 0.01f) << i;
    }
    // The size: 0.03 of the domain's x extent, or the marker font's.
    std::vector<SoFont*> fonts = findAll<SoFont>(markers);
    ASSERT_FALSE(fonts.empty());
    const float defaultSize = fonts.front()->size.getValue();
    curve->set("markerApp.font", "size 0.6");
    traverse();
    fonts = findAll<SoFont>(curve->getPart("marker", FALSE));
    ASSERT_FALSE(fonts.empty());
    EXPECT_NEAR(fonts.front()->size.getValue() / defaultSize, 0.6f / 0.3f, 1e-4f);
    root->removeAllChildren();
    delete domain;
}

TEST_F(PoCurveTest, InterpolationOnASegment) {
    const SbVec2f a(1, 1), b(3, 5), up(2, 0), down(2, 4), flatA(0, 2), flatB(4, 2);
    EXPECT_FLOAT_EQ(PoCurve::calculateInterpolation(2, a, b), 3.0f);
    EXPECT_FLOAT_EQ(PoCurve::calculateInterpolation(2, down, up), 0.0f);
    EXPECT_FLOAT_EQ(PoCurve::calculateInterpolation2(4, a, b), 2.5f);
    EXPECT_FLOAT_EQ(PoCurve::calculateInterpolation2(2, flatA, flatB), 2.0f);
    EXPECT_FLOAT_EQ(PoCurve::calculateInterpolation2(1, up, down), 2.0f);
}

TEST_F(PoCurveTest, BadInputIsReportedAndDrawnAround) {
    ErrorRecorder errors;
    PoCurve* curve = addCurve({{0, 0}, {NAN, 1}, {2, 2}});
    curve->isCurveFilled = TRUE;
    curve->markerFilterType = PoCurve::ALL_POINTS;
    traverse();
    EXPECT_TRUE(errors.contains("point 1 is (nan, 1)")) << errors.messages().size();
    for (const char* part : {"curvePoint", "curveFilling", "marker"})
        EXPECT_EQ(curve->getPart(part, FALSE), nullptr) << part;

    curve->point.setNum(0);
    traverse();
    EXPECT_EQ(curve->getPart("curvePoint", FALSE), nullptr);

    errors.clear();
    curve->point.setValues(0, 2, std::vector<SbVec2f>{{0, 0}, {1, 1}}.data());
    curve->markerFilterType = PoCurve::INDEX_PERIOD;
    curve->raiseFilterType = PoCurve::X_PERIOD;
    curve->raiseXPeriod = NAN;
    traverse();
    EXPECT_TRUE(errors.contains("markerIndexPeriod is not above 0; no point is selected"));
    EXPECT_TRUE(errors.contains("raiseXPeriod is not a number above 0"));
    EXPECT_EQ(curve->getPart("marker", FALSE), nullptr);
    EXPECT_NE(curve->getPart("curvePoint", FALSE), nullptr);

    curve->raiseXPeriod = 1e-6f;
    traverse();
    EXPECT_TRUE(errors.contains("raiseXPeriod selects more than 100000 points"));
    EXPECT_EQ(partPoints(curve, "raisePoint").size(), 200000u);

    curve->curveRep.setValue(42);
    traverse();
    EXPECT_TRUE(errors.contains("curveRep holds 42"));
    EXPECT_EQ(partPoints(curve, "curvePoint").size(), 2u);
}

// A curve from (0, 2) down to (10, -2), filled in red to y = 0 under a
// white line; the picture spans -1 to 11 in x and -6 to 6 in y on 120 x 120
// pixels.
TEST_F(PoCurveTest, TheFilledCurveIsDrawnBetweenTheLineAndTheThreshold) {
    QUILLON_REQUIRE_RENDERING();
    root->addChild(orthographicCamera(SbVec3f(5, 0, 5), 12));
    PoCurve* curve = addCurve({{0, 2}, {10, -2}});
    curve->isCurveFilled = TRUE;
    curve->set("curveFillingApp.material", "diffuseColor 1 0 0");
    curve->set("curvePointApp.material", "diffuseColor 1 1 1");
    const RenderImage image = renderHeadless(root, smallPicture(120, 120));
    auto column = [](float x) { return static_cast<int>((x + 1.0f) * 10.0f); };
    auto row = [](float y) { return static_cast<int>((6.0f - y) * 10.0f); };
    const Rgb red{255, 0, 0}, black{0, 0, 0};
    EXPECT_TRUE(pixelNear(image, column(1), row(0.5f), red));
    EXPECT_TRUE(pixelNear(image, column(9), row(-0.5f), red));
    EXPECT_TRUE(pixelNear(image, column(1), row(2.5f), black));
    EXPECT_TRUE(pixelNear(image, column(1), row(-0.5f), black));
    EXPECT_TRUE(pixelNear(image, column(9), row(0.5f), black));
    // The line is drawn over the filling.
    int white = 0;
    for (int y = row(1.3f); y <= row(0.7f); ++y)
        white += isNear(image.pixel(column(2.5f), y), Rgb{255, 255, 255}, 40);
    EXPECT_GT(white, 0);
}

} // namespace
