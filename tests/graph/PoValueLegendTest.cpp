#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/graph/PbNonLinearDataMapping2.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoLinearValueLegend.h>
#include <Quillon/nodes/PoLinearDataMapping.h>

#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoLineSet.h>
#include <Inventor/nodes/SoMaterial.h>

#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

// A filled box as drawn: its corners and the colours at its lower-left and
// upper-right corners.
struct DrawnBox {
    SbVec3f min, max;
    SbColor low, high;
};

class PoValueLegendTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        mapping.setValues(0, SbColor(0, 0, 1), 1, SbColor(1, 0, 0));
    }
    PoLinearValueLegend* addLegend(PbDataMapping* own = nullptr) {
        auto* legend = new PoLinearValueLegend(SbVec2f(0, 0), SbVec2f(2, 10));
        legend->setDataMapping(own ? own : &mapping);
        root->addChild(legend);
        return legend;
    }
    static Strings values(PoValueLegend* legend) {
        return textsBelow(legend->getPart("valueText", FALSE));
    }
    static std::vector<DrawnBox> filledBoxes(PoValueLegend* legend) {
        std::vector<DrawnBox> boxes;
        SoNode* part = legend->getPart("box", FALSE);
        const std::vector<SoMaterial*> materials = findAll<SoMaterial>(part);
        const std::vector<SoCoordinate3*> corners = findAll<SoCoordinate3>(part);
        if (materials.empty() || corners.empty())
            return boxes;
        const SoMFColor& colors = materials.back()->diffuseColor;
        const SoMFVec3f& points = corners.back()->point;
        for (int i = 0; i + 3 < points.getNum(); i += 4)
            boxes.push_back({points[i], points[i + 2], colors[i], colors[i + 2]});
        return boxes;
    }
    // How many boxes and lines are outlined.
    static int outlineCount(PoValueLegend* legend) {
        int count = 0;
        for (SoLineSet* lines : findAll<SoLineSet>(legend->getPart("boxBorder", FALSE)))
            for (int i = 0; i < lines->numVertices.getNum(); ++i)
                count += lines->numVertices[i] == 5;
        return count;
    }

    PbLinearDataMapping mapping;
};

bool near(const SbColor& a, const SbColor& b) {
    return (a - b).length() < 0.02f;
}

TEST_F(PoValueLegendTest, TheBarIsGraduatedWithTheLinearStepRule) {
    PoLinearValueLegend* legend = addLegend();
    traverse();
    EXPECT_EQ(values(legend), (Strings{"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}));
    legend->step = 0.25f;
    traverse();
    EXPECT_EQ(values(legend), (Strings{"0.00", "0.25", "0.50", "0.75", "1.00"}));
    // The fields' range in place of the mapping's, with a number format.
    legend->step = 0;
    legend->minValue = -5;
    legend->maxValue = 20;
    PbNumericDisplayFormat format(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 1);
    legend->setFormat(&format);
    legend->valueAddStringVisibility = TRUE;
    legend->valueAddString = " m";
    traverse();
    EXPECT_EQ(values(legend), (Strings{"-3.0 m", "0.0 m", "3.0 m", "6.0 m", "9.0 m", "12.0 m",
                                       "15.0 m", "18.0 m"}));
    legend->setFormat(nullptr);
    // A common power of ten is shown once.
    legend->minValue = 0;
    legend->maxValue = 5000;
    legend->valueAddStringVisibility = FALSE;
    traverse();
    EXPECT_EQ(values(legend), (Strings{"0", "1", "2", "3", "4", "5", "x10", "3"}));
}

TEST_F(PoValueLegendTest, TheBarIsShadedFromTheLowestColourUpward) {
    PoLinearValueLegend* legend = addLegend();
    traverse();
    std::vector<DrawnBox> strips = filledBoxes(legend);
    ASSERT_GE(strips.size(), 2u);
    EXPECT_TRUE(near(strips.front().low, SbColor(0, 0, 1)));
    EXPECT_TRUE(near(strips.back().high, SbColor(1, 0, 0)));
    EXPECT_LT(strips.front().min[1], strips.back().min[1]);
    // The middle of the bar in the middle colour.
    const DrawnBox& middle = strips[strips.size() / 2];
    EXPECT_TRUE(near(middle.low, SbColor(0.5f, 0, 0.5f)));
    EXPECT_EQ(outlineCount(legend), 1);

    // Lying along x, the smallest value at the left, the values below.
    legend->incrementType = PoLegend::HORIZONTAL_INCREMENT;
    legend->end = SbVec2f(10, 2);
    traverse();
    strips = filledBoxes(legend);
    EXPECT_LT(strips.front().min[0], strips.back().min[0]);
    EXPECT_TRUE(near(strips.front().low, SbColor(0, 0, 1)));
    // Corners from right to left turn it end for end.
    legend->start = SbVec2f(10, 0);
    legend->end = SbVec2f(0, 2);
    traverse();
    strips = filledBoxes(legend);
    EXPECT_GT(strips.front().min[0], strips.back().min[0]);
}

TEST_F(PoValueLegendTest, EnabledThresholdsAreShownAsBoxesBeyondTheEnds) {
    mapping.setMinThreshold(0.25f, SbColor(0, 1, 0));
    mapping.setMaxThreshold(0.75f);
    mapping.enableThresholds(TRUE, TRUE);
    PoLinearValueLegend* legend = addLegend();
    legend->step = 0.25f;
    traverse();
    // The bar from 0.25 to 0.75; its lowest colour the mapping's just above
    // the threshold, not the threshold's.
    EXPECT_EQ(values(legend), (Strings{"0.25", "0.50", "0.75"}));
    const std::vector<DrawnBox> boxes = filledBoxes(legend);
    ASSERT_GE(boxes.size(), 2u);
    EXPECT_TRUE(near(boxes.front().low, SbColor(0.25f, 0, 0.75f)));
    // The minimum's box in green below the bar; the maximum's, without
    // colour, only outlined above it.
    const DrawnBox& green = boxes.back();
    EXPECT_EQ(green.low, SbColor(0, 1, 0));
    EXPECT_LT(green.max[1], boxes.front().min[1]);
    EXPECT_EQ(outlineCount(legend), 3);
}

TEST_F(PoValueLegendTest, AMappingByLevelsShowsOneBoxPerLevel) {
    PbNonLinearDataMapping2 levels;
    const float limits[] = {10, 20, 50};
    const SbColor colors[] = {SbColor(0, 0, 1), SbColor(0, 1, 0), SbColor(1, 1, 0),
                              SbColor(1, 0, 0)};
    levels.setValues(PbNonLinearDataMapping2::NON_LINEAR_PER_LEVEL, 3, limits, colors);
    PoLinearValueLegend* legend = addLegend(&levels);
    traverse();
    EXPECT_EQ(values(legend), (Strings{"10", "20", "50"}));
    const std::vector<DrawnBox> boxes = filledBoxes(legend);
    ASSERT_EQ(boxes.size(), 4u);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(boxes[i].low, colors[i]) << i;
        EXPECT_NEAR(boxes[i].max[1] - boxes[i].min[1], boxes[0].max[1] - boxes[0].min[1], 1e-4f);
    }
    EXPECT_LT(boxes[0].min[1], boxes[3].min[1]);
    EXPECT_EQ(outlineCount(legend), 4);
}

TEST_F(PoValueLegendTest, TheMappingComesFromTheKitOrTheState) {
    auto* node = new PoLinearDataMapping;
    node->value1 = 0;
    node->value2 = 10;
    root->addChild(node);
    auto* legend = new PoLinearValueLegend;
    root->addChild(legend);
    traverse();
    EXPECT_EQ(values(legend).back(), "10");
    node->value2 = 40;
    traverse();
    EXPECT_EQ(values(legend).back(), "40");
    auto* own = new PbLinearDataMapping;
    own->setValues(0, SbColor(0, 0, 0), 4, SbColor(1, 1, 1));
    legend->setDataMapping(own);
    traverse();
    EXPECT_EQ(values(legend).back(), "4.0");
    // A kit that rebuilds at once does so without the mapping being
    // destroyed (and outside a traversal, without the state's).
    legend->setUpdateMethod(PoBase::UPDATE_IMMEDIATELY);
    delete own;
    EXPECT_EQ(legend->getDataMapping(), nullptr);
    EXPECT_EQ(legend->getPart("valueText", FALSE), nullptr);
    legend->setUpdateMethod(PoBase::UPDATE_AT_TRAVERSAL);
    legend->touchKit();
    traverse();
    EXPECT_EQ(values(legend).back(), "40");
}

TEST_F(PoValueLegendTest, BadInputIsReportedAndDrawnAround) {
    ErrorRecorder errors;
    mapping.setValues(3, SbColor(0, 0, 0), 3, SbColor(1, 1, 1));
    PoLinearValueLegend* legend = addLegend();
    traverse();
    EXPECT_TRUE(errors.contains(
        "PoLinearValueLegend::rebuild(): the values shown run from 3 to 3; no bar is drawn"));
    EXPECT_EQ(legend->getPart("box", FALSE), nullptr);
    EXPECT_NE(legend->getPart("background", FALSE), nullptr);
    mapping.setValues(0, SbColor(0, 0, 0), 1, SbColor(1, 1, 1));
    legend->step = NAN;
    traverse();
    EXPECT_TRUE(errors.contains("the step is not a number"));
    EXPECT_EQ(values(legend).size(), 6u);
    // No mapping at all: only the background.
    legend->setDataMapping(nullptr);
    traverse();
    EXPECT_EQ(legend->getPart("box", FALSE), nullptr);
}

// A bar from blue to red between (0, 0) and (2, 10), seen on 100 x 100
// pixels spanning -4 to 6 in x and 0 to 10 in y.
TEST_F(PoValueLegendTest, TheBarIsDrawnInTheMappingsColours) {
    QUILLON_REQUIRE_RENDERING();
    root->addChild(orthographicCamera(SbVec3f(1, 5, 5), 10));
    PoLinearValueLegend* legend = addLegend();
    legend->valueVisibility = PoLegend::VISIBILITY_OFF;
    traverse();
    const std::vector<DrawnBox> strips = filledBoxes(legend);
    ASSERT_FALSE(strips.empty());
    const float x = 0.5f * (strips.front().min[0] + strips.front().max[0]);
    const float bottom = strips.front().min[1], top = strips.back().max[1];
    const RenderImage image = renderHeadless(root);
    auto pixel = [&](float px, float py, const Rgb& expected) {
        return pixelNear(image, static_cast<int>((px + 4.0f) * 10.0f),
                         static_cast<int>((10.0f - py) * 10.0f), expected, 20);
    };
    EXPECT_TRUE(pixel(x, bottom + 0.2f, Rgb{0, 0, 250}));
    EXPECT_TRUE(pixel(x, top - 0.2f, Rgb{250, 0, 0}));
    EXPECT_TRUE(pixel(x, 0.5f * (bottom + top), Rgb{128, 0, 128}));
}

} // namespace
