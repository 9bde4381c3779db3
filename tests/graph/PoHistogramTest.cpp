#include <Quillon/graph/PbDomain.h>
#include <Quillon/graph/PbLinearDataMapping.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoMultipleHistogram.h>
#include <Quillon/graph/PoSingleHistogram.h>
#include <Quillon/nodes/PoDomain.h>
#include <Quillon/nodes/PoLinearDataMapping.h>

#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMatrixTransform.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

// A bar as x0, y0, x1, y1 in the coordinates of the data.
struct Rect {
    float x0, y0, x1, y1;
};

void expectRects(const std::vector<Rect>& actual, const std::vector<Rect>& expected,
                 const std::string& what) {
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (size_t i = 0; i < actual.size(); ++i) {
        const float a[] = {actual[i].x0, actual[i].y0, actual[i].x1, actual[i].y1};
        const float e[] = {expected[i].x0, expected[i].y0, expected[i].x1, expected[i].y1};
        for (int k = 0; k < 4; ++k)
            EXPECT_NEAR(a[k], e[k], 1e-5f) << what << ": bar " << i << ", coordinate " << k;
    }
}

class PoHistogramTest : public SceneTest {
protected:
    template <class Kit> Kit* add(Kit* kit) {
        root->addChild(kit);
        return kit;
    }
    // The bars drawn, through the kit's transform, in drawing order.
    static std::vector<Rect> bars(PoHistogram* kit) {
        std::vector<Rect> rects;
        const auto coordinates = findAll<SoCoordinate3>(kit->getPart("bar", FALSE));
        if (coordinates.empty())
            return rects;
        const auto* transform = static_cast<SoMatrixTransform*>(kit->getPart("transform", FALSE));
        const SbMatrix matrix = transform->matrix.getValue();
        const SoMFVec3f& points = coordinates.front()->point;
        for (int i = 0; i + 3 < points.getNum(); i += 4) {
            SbBox3f box;
            for (int k = 0; k < 4; ++k) {
                SbVec3f p;
                matrix.multVecMatrix(points[i + k], p);
                box.extendBy(p);
            }
            rects.push_back({box.getMin()[0], box.getMin()[1], box.getMax()[0], box.getMax()[1]});
        }
        return rects;
    }
    static std::vector<SbColor> barColors(PoHistogram* kit) {
        const auto materials = findAll<SoMaterial>(kit->getPart("bar", FALSE));
        std::vector<SbColor> colors;
        if (!materials.empty())
            for (int i = 0; i < materials.front()->diffuseColor.getNum(); ++i)
                colors.push_back(materials.front()->diffuseColor[i]);
        return colors;
    }
    static Strings texts(PoHistogram* kit, const char* part) {
        return textsBelow(kit->getPart(part, FALSE));
    }
    // What each text of the part covers, in the drawing's frame.
    static std::vector<SbBox3f> textBoxes(PoHistogram* kit, const char* part) {
        std::vector<SbBox3f> boxes;
        auto* group = static_cast<SoGroup*>(kit->getPart(part, FALSE));
        for (int i = 0; group && i < group->getNumChildren(); ++i) {
            SoGetBoundingBoxAction action(SbViewportRegion(100, 100));
            action.apply(group->getChild(i));
            boxes.push_back(action.getBoundingBox());
        }
        return boxes;
    }
    static SbBox3f barBox(PoHistogram* kit, int bar) {
        const SoMFVec3f& points = findAll<SoCoordinate3>(kit->getPart("bar", FALSE))[0]->point;
        SbBox3f box;
        for (int k = 0; k < 4; ++k)
            box.extendBy(points[4 * bar + k]);
        return box;
    }
};

TEST_F(PoHistogramTest, BarsAreCentredInTheirCellsForBothSpaceTypesAndDirections) {
    const struct {
        const char* what;
        PoHistogram::Type type;
        SbVec2f start;
        float end;
        PoHistogram::BarSpaceType spaceType;
        float space;
        std::vector<float> values;
        SbBox2f domain;
        std::vector<Rect> expected;
    } cases[] = {
        {"default quarter space",
         PoHistogram::X,
         SbVec2f(0, 0),
         4,
         PoHistogram::REL_SPACE,
         0.25f,
         {1, 2},
         SbBox2f(0, 0, 1, 1),
         {{0.25f, 0, 1.75f, 1}, {2.25f, 0, 3.75f, 2}}},
        {"backwards, fixed space, a value below the base line",
         PoHistogram::X,
         SbVec2f(4, 1),
         0,
         PoHistogram::FIXED_SPACE,
         0.5f,
         {3, 0.5f},
         SbBox2f(0, 0, 1, 1),
         {{2.25f, 1, 3.75f, 3}, {0.25f, 0.5f, 1.75f, 1}}},
        {"a fixed space wider than the cell, a value on the base line",
         PoHistogram::X,
         SbVec2f(0, 2),
         2,
         PoHistogram::FIXED_SPACE,
         3,
         {5, 2},
         SbBox2f(0, 0, 1, 1),
         {{0.5f, 2, 0.5f, 5}, {1.5f, 2, 1.5f, 2}}},
        {"no fixed space",
         PoHistogram::X,
         SbVec2f(0, 0),
         2,
         PoHistogram::FIXED_SPACE,
         -1,
         {1},
         SbBox2f(0, 0, 1, 1),
         {{0, 0, 2, 1}}},
        {"type Y in a domain ten times higher than wide",
         PoHistogram::Y,
         SbVec2f(1, 0),
         20,
         PoHistogram::REL_SPACE,
         0.5f,
         {3, -1},
         SbBox2f(0, 0, 2, 20),
         {{1, 2.5f, 3, 7.5f}, {-1, 12.5f, 1, 17.5f}}},
    };
    for (const auto& c : cases) {
        PbDomain domain(c.domain);
        auto* kit = add(new PoSingleHistogram(c.start, c.end, static_cast<int>(c.values.size()),
                                              c.values.data()));
        kit->setDomain(&domain);
        kit->type = c.type;
        kit->barSpaceType = c.spaceType;
        kit->barSpaceValue = c.space;
        traverse();
        expectRects(bars(kit), c.expected, c.what);
        root->removeChild(kit);
    }
}

TEST_F(PoHistogramTest, BarsTakeTheListColoursInTurnOrTheirMappedColour) {
    const float values[] = {0.25f, 0.5f, 1.0f};
    auto* kit = add(new PoSingleHistogram(SbVec2f(0, 0), 3, 3, values));
    kit->color.setValues(0, 2, std::vector<SbColor>{SbColor(1, 0, 0), SbColor(0, 1, 0)}.data());
    traverse();
    EXPECT_EQ(barColors(kit),
              (std::vector<SbColor>{SbColor(1, 0, 0), SbColor(0, 1, 0), SbColor(1, 0, 0)}));
    // A mapping from the state.
    auto* mapping = new PoLinearDataMapping;
    mapping->color1.setValue(0, 0, 0);
    mapping->color2.setValue(1, 1, 1);
    root->insertChild(mapping, 0);
    kit->coloring = PoHistogram::DATA_MAPPING;
    traverse();
    EXPECT_EQ(barColors(kit), (std::vector<SbColor>{SbColor(0.25f, 0.25f, 0.25f),
                                                    SbColor(0.5f, 0.5f, 0.5f), SbColor(1, 1, 1)}));
    // The kit's own mapping wins over the state's; a value without colour
    // leaves its bar out.
    PbLinearDataMapping own;
    own.setValues(0, SbColor(0, 0, 1), 2, SbColor(0, 0, 0));
    own.setMinThreshold(0.3f);
    own.enableThresholds(1, 0);
    kit->setDataMapping(&own);
    traverse();
    EXPECT_EQ(barColors(kit), (std::vector<SbColor>{SbColor(0, 0, 0.75f), SbColor(0, 0, 0.5f)}));
    EXPECT_EQ(bars(kit).size(), 2u);
    kit->setDataMapping(nullptr);
}

TEST_F(PoHistogramTest, ValueTextsShareOneFormatAndStandBeyondTheValueEnd) {
    const float values[] = {1.5f, -2.5f, 3};
    const char* names[] = {"North", "South", "East"};
    auto* kit = add(new PoSingleHistogram(SbVec2f(0, 0), 3, 3, values, names));
    kit->valueAddString = " t";
    traverse();
    EXPECT_EQ(texts(kit, "valueText"), (Strings{"1.5", "-2.5", "3.0"}));
    EXPECT_EQ(texts(kit, "nameText"), (Strings{"North", "South", "East"}));
    // Values beyond the value end, names beyond the base, both centred on
    // their bar.
    const std::vector<SbBox3f> valueBoxes = textBoxes(kit, "valueText");
    const std::vector<SbBox3f> nameBoxes = textBoxes(kit, "nameText");
    for (int i = 0; i < 3; ++i) {
        const SbBox3f bar = barBox(kit, i);
        const bool rises = values[i] > 0;
        EXPECT_NEAR(valueBoxes[i].getCenter()[0], bar.getCenter()[0], 0.02f) << i;
        EXPECT_NEAR(nameBoxes[i].getCenter()[0], bar.getCenter()[0], 0.02f) << i;
        if (rises) {
            EXPECT_GT(valueBoxes[i].getMin()[1], bar.getMax()[1]) << i;
            EXPECT_LT(nameBoxes[i].getMax()[1], bar.getMin()[1]) << i;
        } else {
            EXPECT_LT(valueBoxes[i].getMax()[1], bar.getMin()[1]) << i;
            EXPECT_GT(nameBoxes[i].getMin()[1], bar.getMax()[1]) << i;
        }
    }
    // Explicit positions: inside the top, right of the bar; the added
    // string; the kit's own number format.
    kit->valueAddStringVisibility = PoHistogram::VISIBILITY_ON;
    kit->valuePosition = PoHistogram::POS_TOP_IN;
    kit->namePosition = PoHistogram::POS_RIGHT_OUT;
    PbNumericDisplayFormat format(PbNumericDisplayFormat::INTEGER_FORMAT, 0, 0);
    kit->setFormat(&format);
    traverse();
    EXPECT_EQ(texts(kit, "valueText"), (Strings{"2 t", "-3 t", "3 t"}));
    const SbBox3f top = textBoxes(kit, "valueText")[2];
    const SbBox3f right = textBoxes(kit, "nameText")[2];
    const SbBox3f bar = barBox(kit, 2);
    EXPECT_LT(top.getMax()[1], bar.getMax()[1]);
    EXPECT_GT(top.getMin()[1], bar.getCenter()[1]);
    EXPECT_GT(right.getMin()[0], bar.getMax()[0]);
    EXPECT_NEAR(right.getCenter()[1], bar.getCenter()[1], 0.05f);
    kit->setFormat(nullptr);
    // Hidden texts.
    kit->valueVisibility = PoHistogram::VISIBILITY_OFF;
    kit->nameVisibility = PoHistogram::VISIBILITY_OFF;
    traverse();
    EXPECT_EQ(kit->getPart("valueText", FALSE), nullptr);
    EXPECT_EQ(kit->getPart("nameText", FALSE), nullptr);
}

TEST_F(PoHistogramTest, PathsTurnTheTextsAndVrml2ModeSinksTheBars) {
    const float values[] = {12345, 20000};
    auto* kit = add(new PoSingleHistogram(SbVec2f(0, 0), 2, 2, values));
    PbDomain domain(0, 0, 2, 20000);
    kit->setDomain(&domain);
    kit->valuePath = PoHistogram::PATH_UP;
    traverse();
    SbBox3f text = textBoxes(kit, "valueText")[0];
    SbBox3f bar = barBox(kit, 0);
    EXPECT_GT(text.getMax()[1] - text.getMin()[1], 2 * (text.getMax()[0] - text.getMin()[0]));
    EXPECT_GT(text.getMin()[1], bar.getMax()[1]);
    EXPECT_EQ(bar.getMin()[2], 0.0f);
    // Lying bars have their values on their right.
    domain.setDomain(0, 0, 20000, 2);
    kit->type = PoHistogram::Y;
    kit->valuePath = PoHistogram::PATH_DEPEND;
    traverse();
    text = textBoxes(kit, "valueText")[0];
    bar = barBox(kit, 0);
    EXPECT_GT(text.getMax()[0] - text.getMin()[0], text.getMax()[1] - text.getMin()[1]);
    EXPECT_GT(text.getMin()[0], bar.getMax()[0]);
    EXPECT_NEAR(text.getCenter()[1], bar.getCenter()[1], 0.01f * bar.getSize()[1]);
    EXPECT_EQ(textsBelow(kit->getPart("valueText", FALSE)), (Strings{"12.3E3", "20.0E3"}));
    // Bars 0.75 wide go 0.0075 below the plane.
    PoBase::setVRML2Mode(1);
    kit->touchKit();
    traverse();
    PoBase::setVRML2Mode(0);
    EXPECT_FLOAT_EQ(barBox(kit, 1).getMin()[2], -0.0075f);
}

TEST_F(PoHistogramTest, AutomaticTextsFitTheirCells) {
    const float values[] = {1000000, 2000000, 3000000, 4000000};
    auto* kit = add(new PoSingleHistogram(SbVec2f(0, 0), 1, 4, values));
    kit->valueAddStringVisibility = PoHistogram::VISIBILITY_ON;
    kit->valueAddString = " inhabitants";
    traverse();
    const std::vector<SbBox3f> boxes = textBoxes(kit, "valueText");
    ASSERT_EQ(boxes.size(), 4u);
    for (size_t i = 1; i < boxes.size(); ++i)
        EXPECT_LT(boxes[i - 1].getMax()[0], boxes[i].getMin()[0]) << i;
    // A size asked for is kept, relative to the domain's width.
    kit->valueFontSize = 0.1f;
    traverse();
    EXPECT_GT(textBoxes(kit, "valueText")[0].getMax()[0] -
                  textBoxes(kit, "valueText")[0].getMin()[0],
              0.3f);
}

TEST_F(PoHistogramTest, MultipleHistogramsJuxtaposeOrStackTheirSeries) {
    // Two series of two bars: (2, -1) and (1, 3).
    const float values[] = {2, -1, 1, 3};
    const char* names[] = {"a", "b"};
    auto* kit = add(new PoMultipleHistogram(SbVec2f(0, 0), 4, 2, 2, values, names));
    kit->barSpaceValue = 0.5f;
    kit->color.setValues(0, 2, std::vector<SbColor>{SbColor(1, 0, 0), SbColor(0, 0, 1)}.data());
    const struct {
        PoMultipleHistogram::Representation representation;
        std::vector<Rect> expected;
        Strings texts;
    } cases[] = {
        {PoMultipleHistogram::JUXTAPOSED,
         {{0.5f, 0, 1, 2}, {1, 0, 1.5f, 1}, {2.5f, -1, 3, 0}, {3, 0, 3.5f, 3}},
         {"2.0", "1.0", "-1.0", "3.0"}},
        // Negative values stack downwards, on their own side.
        {PoMultipleHistogram::ACCUMULATED,
         {{0.5f, 0, 1.5f, 2}, {0.5f, 2, 1.5f, 3}, {2.5f, -1, 3.5f, 0}, {2.5f, 0, 3.5f, 3}},
         {"2.0", "1.0", "-1.0", "3.0"}},
        // The negative value counts 0.
        {PoMultipleHistogram::PERCENTAGE,
         {{0.5f, 0, 1.5f, 66.666667f}, {0.5f, 66.666667f, 1.5f, 100}, {2.5f, 0, 3.5f, 100}},
         {"67", "33", "100"}},
    };
    for (const auto& c : cases) {
        ErrorRecorder errors;
        kit->representation = c.representation;
        traverse();
        expectRects(bars(kit), c.expected, std::to_string(c.representation));
        EXPECT_EQ(texts(kit, "valueText"), c.texts) << c.representation;
        EXPECT_EQ(texts(kit, "nameText"), (Strings{"a", "b"})) << c.representation;
        // Each series keeps its colour.
        EXPECT_EQ(barColors(kit).front(), SbColor(1, 0, 0));
        EXPECT_EQ(barColors(kit).back(), SbColor(0, 0, 1));
        EXPECT_EQ(errors.contains("value 1 is negative; it counts as 0 in percentages"),
                  c.representation == PoMultipleHistogram::PERCENTAGE);
    }
}

TEST_F(PoHistogramTest, BadInputIsReportedAndDrawnAround) {
    ErrorRecorder errors;
    const float values[] = {1, NAN, 2};
    auto* single = add(new PoSingleHistogram(SbVec2f(0, 0), 3, 3, values));
    traverse();
    EXPECT_TRUE(errors.contains("PoSingleHistogram::rebuild(): value 1 is not a number"));
    EXPECT_EQ(bars(single).size(), 2u);

    single->end = 0;
    traverse();
    EXPECT_TRUE(errors.contains("the row starts and ends at 0; the histogram is not drawn"));
    EXPECT_EQ(single->getPart("bar", FALSE), nullptr);
    single->end = INFINITY;
    traverse();
    EXPECT_TRUE(errors.contains("start and end must be numbers"));
    EXPECT_EQ(single->getPart("bar", FALSE), nullptr);
    single->end = 3;
    single->barSpaceValue = NAN;
    traverse();
    EXPECT_TRUE(errors.contains("barSpaceValue is not a number; the bars fill their cells"));
    EXPECT_NEAR(bars(single).front().x1 - bars(single).front().x0, 1.0f, 1e-6f);
    single->type.setValue(5);
    traverse();
    EXPECT_TRUE(errors.contains("type holds 5"));
    EXPECT_EQ(bars(single).size(), 2u);

    // An empty histogram draws nothing, quietly.
    errors.clear();
    single->value.setNum(0);
    single->type = PoHistogram::X;
    traverse();
    EXPECT_EQ(single->getPart("bar", FALSE), nullptr);
    EXPECT_TRUE(errors.messages().empty());

    auto* multiple = add(new PoMultipleHistogram);
    multiple->value.setValues(0, 5, std::vector<float>{1, 2, 3, 4, 5}.data());
    multiple->numHistograms = 2;
    traverse();
    EXPECT_TRUE(errors.contains("5 values do not make 2 whole series; the last 1 are not drawn"));
    EXPECT_EQ(bars(multiple).size(), 4u);
    multiple->numHistograms = 0;
    traverse();
    EXPECT_TRUE(errors.contains("numHistograms is 0; at least one series is needed"));
    EXPECT_EQ(multiple->getPart("bar", FALSE), nullptr);
    multiple->numHistograms = -3;
    traverse();
    EXPECT_EQ(multiple->getPart("bar", FALSE), nullptr);
}

// ---------------------------------------------------------------- render

// The data 0..4 by 0..4, their domain, fill a 200 x 200 picture: a pixel
// is 0.02 wide.
class PoHistogramRenderTest : public PoHistogramTest {
protected:
    RenderImage render() {
        root->insertChild(orthographicCamera(SbVec3f(2, 2, 5), 4), 0);
        auto* domain = new PoDomain;
        domain->max.setValue(4, 4, 0);
        root->insertChild(domain, 1);
        return renderHeadless(root, smallPicture(200, 200));
    }
    static int column(float x) { return static_cast<int>(x * 50.0f); }
    static int row(float y) { return static_cast<int>((4.0f - y) * 50.0f); }
};

TEST_F(PoHistogramRenderTest, SingleHistogramBarsFillTheirRectangles) {
    QUILLON_REQUIRE_RENDERING();
    const float values[] = {1, 3};
    auto* kit = add(new PoSingleHistogram(SbVec2f(0, 0.5f), 4, 2, values));
    kit->color.setValues(0, 2, std::vector<SbColor>{SbColor(1, 0, 0), SbColor(0, 1, 0)}.data());
    kit->valueVisibility = PoHistogram::VISIBILITY_OFF;
    const RenderImage image = render();
    // Bars from 0.25 to 1.75 up to 1, and from 2.25 to 3.75 up to 3.
    EXPECT_TRUE(pixelNear(image, column(1), row(0.75f), Rgb{255, 0, 0}));
    EXPECT_TRUE(pixelNear(image, column(3), row(2.5f), Rgb{0, 255, 0}));
    EXPECT_TRUE(pixelNear(image, column(1), row(1.3f), Rgb{0, 0, 0}));
    EXPECT_TRUE(pixelNear(image, column(2), row(0.75f), Rgb{0, 0, 0}));
    EXPECT_TRUE(pixelNear(image, column(3), row(0.3f), Rgb{0, 0, 0}));
    EXPECT_EQ(countPixelsNear(image, Rgb{0, 255, 0}), 75 * 125);
}

TEST_F(PoHistogramRenderTest, StackedSeriesShowTheirColoursAndTexts) {
    QUILLON_REQUIRE_RENDERING();
    const float values[] = {1, 2};
    auto* kit = add(new PoMultipleHistogram(SbVec2f(0, 0), 4, 2, 1, values, nullptr,
                                            PoMultipleHistogram::ACCUMULATED));
    kit->color.setValues(0, 2, std::vector<SbColor>{SbColor(0, 0, 1), SbColor(1, 1, 0)}.data());
    kit->valueFontSize = 0.1f;
    const RenderImage image = render();
    // One stack from 0.5 to 3.5: blue up to 1, yellow from 1 to 3, with
    // its value texts at the middle of each part, in the inherited colour.
    const Rgb yellow{255, 255, 0};
    EXPECT_TRUE(pixelNear(image, column(0.7f), row(0.5f), Rgb{0, 0, 255}));
    EXPECT_TRUE(pixelNear(image, column(0.7f), row(2.5f), yellow));
    EXPECT_TRUE(pixelNear(image, column(1), row(3.5f), Rgb{0, 0, 0}));
    auto textPixels = [&](float x0, float y0, float x1, float y1, const Rgb& under) {
        int count = 0;
        for (int x = column(x0); x <= column(x1); ++x)
            for (int y = row(y1); y <= row(y0); ++y)
                count += !isNear(image.pixel(x, y), under, 60);
        return count;
    };
    EXPECT_GT(textPixels(1.7f, 1.8f, 2.3f, 2.2f, yellow), 10);
    EXPECT_EQ(textPixels(1.7f, 2.5f, 2.3f, 2.9f, yellow), 0);
}

} // namespace
