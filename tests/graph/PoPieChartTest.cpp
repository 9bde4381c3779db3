#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoPieChart2D.h>

#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoMaterial.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

class PoPieChartTest : public SceneTest {
protected:
    PoPieChart2D* addPie(const std::vector<float>& values, const Strings& names = {}) {
        auto* pie = new PoPieChart2D;
        pie->sliceValue.setValues(0, static_cast<int>(values.size()), values.data());
        pie->sliceText.setNum(static_cast<int>(names.size()));
        for (size_t i = 0; i < names.size(); ++i)
            pie->sliceText.set1Value(static_cast<int>(i), names[i].c_str());
        root->addChild(pie);
        return pie;
    }
    static Strings texts(PoPieChart* pie, const char* part) {
        return textsBelow(pie->getPart(part, FALSE));
    }
    // Per slice: its colour and the points of its fan, centre first.
    static std::vector<SbColor> sliceColors(PoPieChart* pie) {
        std::vector<SbColor> colors;
        for (SoMaterial* material : findAll<SoMaterial>(pie->getPart("slice", FALSE)))
            colors.push_back(material->diffuseColor[0]);
        return colors;
    }
    static std::vector<SoCoordinate3*> fans(PoPieChart* pie) {
        return findAll<SoCoordinate3>(pie->getPart("slice", FALSE));
    }
    // The number of the slice under the point of the plane, picked along -z.
    int pickAt(PoPieChart* pie, float x, float y) {
        SoRayPickAction pick(SbViewportRegion(100, 100));
        pick.setRay(SbVec3f(x, y, 10), SbVec3f(0, 0, -1));
        pick.apply(root);
        return pie->getPickedSliceNumber(pick.getPickedPoint());
    }
};

TEST_F(PoPieChartTest, SmallSlicesAreGatheredOnlyWhenThereAreSeveral) {
    const Strings names{"a", "b", "c"};
    const struct {
        const char* what;
        std::vector<float> values;
        bool active;
        PoPieChart::PercentStatus status;
        float minimum;
        Strings shown;
        Strings percents;
    } cases[] = {
        {"two small",
         {2, 3, 95},
         true,
         PoPieChart::PERCENTAGE,
         5,
         {"c", "Others"},
         {"95.0%", "5.0%"}},
        {"one small", {3, 97, 0}, true, PoPieChart::PERCENTAGE, 5, {"a", "b"}, {"3.0%", "97.0%"}},
        {"absolute",
         {1, 2, 50},
         true,
         PoPieChart::ABSOLUTE,
         2.5f,
         {"c", "Others"},
         {"94.3%", "5.7%"}},
        {"absolute, none below",
         {3, 4, 50},
         true,
         PoPieChart::ABSOLUTE,
         2.5f,
         {"a", "b", "c"},
         {"5.3%", "7.0%", "87.7%"}},
        {"not active",
         {2, 3, 95},
         false,
         PoPieChart::PERCENTAGE,
         5,
         {"a", "b", "c"},
         {"2.0%", "3.0%", "95.0%"}},
        {"negative and zero values",
         {-4, 0, 1},
         true,
         PoPieChart::PERCENTAGE,
         5,
         {"c"},
         {"100.0%"}},
        {"nothing positive", {-4, 0, 0}, true, PoPieChart::PERCENTAGE, 5, {}, {}},
    };
    for (const auto& c : cases) {
        PoPieChart2D* pie = addPie(c.values, names);
        pie->sliceGroupActive = c.active;
        pie->sliceGroupFlagMin = c.status;
        pie->sliceGroupMinValue = c.minimum;
        pie->intAnnotValueVisibility = FALSE;
        pie->intAnnotPercentVisibility = TRUE;
        traverse();
        EXPECT_EQ(texts(pie, "extAnnotText"), c.shown) << c.what;
        EXPECT_EQ(texts(pie, "intAnnotPercent"), c.percents) << c.what;
        EXPECT_EQ(fans(pie).size(), c.shown.size()) << c.what;
        root->removeChild(pie);
    }
}

TEST_F(PoPieChartTest, SlicesTakeTheirColoursAndTheGroupTheLast) {
    PoPieChart2D* pie = addPie({40, 1, 30, 1, 28});
    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 1, 0), SbColor(0, 0, 1)};
    pie->sliceColor.setValues(0, 3, colors);
    traverse();
    // Slices 1, 3 and 5, then the group of 2 and 4.
    EXPECT_EQ(sliceColors(pie), (std::vector<SbColor>{colors[0], colors[2], colors[1], colors[2]}));
    pie->sliceGroupActive = FALSE;
    traverse();
    EXPECT_EQ(sliceColors(pie),
              (std::vector<SbColor>{colors[0], colors[1], colors[2], colors[0], colors[1]}));
}

TEST_F(PoPieChartTest, SlicesTurnCounterclockwiseFromXInStepsAndArePulledOut) {
    PoPieChart2D* pie = addPie({1, 1, 2});
    pie->center.setValue(1, 2);
    pie->radius = 2;
    pie->sliceAngleStep = static_cast<float>(M_PI / 20);
    pie->setSliceToTranslate(2, 0.5f);
    traverse();
    const std::vector<SoCoordinate3*> slices = fans(pie);
    ASSERT_EQ(slices.size(), 3u);
    // A quarter turn in steps of 9 degrees: the centre and 11 arc points.
    const SoMFVec3f& first = slices[0]->point;
    ASSERT_EQ(first.getNum(), 12);
    EXPECT_TRUE(first[0].equals(SbVec3f(1, 2, 0), 1e-6f));
    EXPECT_TRUE(first[1].equals(SbVec3f(3, 2, 0), 1e-5f));
    EXPECT_TRUE(first[2].equals(
        SbVec3f(1 + 2 * std::cos(M_PI / 20), 2 + 2 * std::sin(M_PI / 20), 0), 1e-5f));
    EXPECT_TRUE(first[11].equals(SbVec3f(1, 4, 0), 1e-5f));
    // The second quarter, pulled out along its middle (135 degrees).
    const SbVec3f pulled(1 - 0.5f * std::sqrt(0.5f), 2 + 0.5f * std::sqrt(0.5f), 0);
    EXPECT_TRUE(slices[1]->point[0].equals(pulled, 1e-5f));
    EXPECT_TRUE(slices[1]->point[1].equals(pulled + SbVec3f(0, 2, 0), 1e-5f));
    // The half turn that is left ends where the first began.
    const SoMFVec3f& last = slices[2]->point;
    EXPECT_EQ(last.getNum(), 22);
    EXPECT_TRUE(last[last.getNum() - 1].equals(SbVec3f(3, 2, 0), 1e-5f));
    // A slice whose step does not divide its arc ends on a shorter step.
    pie->sliceAngleStep = 1.0f;
    traverse();
    EXPECT_EQ(fans(pie)[0]->point.getNum(), 4);
}

TEST_F(PoPieChartTest, TranslateListsAreEditedSliceBySlice) {
    PoPieChart2D* pie = addPie({1, 1, 1});
    EXPECT_FLOAT_EQ(pie->getSliceToTranslate(2), 0.0f);
    pie->setSliceToTranslate(2, 0.3f);
    pie->setSliceToTranslate(3, 0.1f);
    pie->setSliceToTranslate(2, 0.4f);
    EXPECT_FLOAT_EQ(pie->getSliceToTranslate(2), 0.4f);
    EXPECT_FLOAT_EQ(pie->getSliceToTranslate(3), 0.1f);
    EXPECT_EQ(pie->sliceToTranslateNumber.getNum(), 3); // the default 0 stays first
    pie->setSliceToTranslate(2, 0.0f);
    EXPECT_FLOAT_EQ(pie->getSliceToTranslate(2), 0.0f);
    EXPECT_EQ(pie->sliceToTranslateNumber.getNum(), 2);
    EXPECT_EQ(pie->sliceToTranslateValue.getNum(), 2);
}

TEST_F(PoPieChartTest, PicksAnswerTheSliceNumber) {
    PoPieChart2D* pie = addPie({50, 40, 3, 3, 4}, {"a", "b", "c", "d", "e"});
    pie->radius = 2;
    traverse();
    // Slice 1 spans 0 to 180 degrees, slice 2 the next 144, the group the
    // last 36 degrees.
    EXPECT_EQ(pickAt(pie, 0, 1), 1);
    EXPECT_EQ(pickAt(pie, -1, -0.2f), 2);
    EXPECT_EQ(pickAt(pie, 1.5f, -0.3f), PoPieChart::GROUP_SLICE);
    EXPECT_EQ(pickAt(pie, 5, 5), PoPieChart::NO_SLICE);
    EXPECT_EQ(pie->getPickedSliceNumber(nullptr), PoPieChart::NO_SLICE);
    // The value annotation of slice 1 stands over it, at 0.6 radius.
    EXPECT_EQ(pickAt(pie, 0, 1.2f), 1);
}

TEST_F(PoPieChartTest, AnnotationsShowNamesValuesAndSharesWithoutOverlapping) {
    PoPieChart2D* pie = addPie({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
                               {"one", "two", "three", "four", "five", "six", "seven", "eight",
                                "nine", "ten", "eleven", "twelve"});
    pie->sliceGroupActive = FALSE;
    pie->extAnnotValueVisibility = TRUE;
    pie->extAnnotAddStringVisibility = TRUE;
    pie->extAnnotAddString = " kg";
    PbNumericDisplayFormat format(PbNumericDisplayFormat::FLOAT_FORMAT, 0, 1);
    pie->setFormat(&format);
    for (int position = PoPieChart::RADIAL_EXT_POS; position <= PoPieChart::SQUARE_ALIGNED_EXT_POS;
         ++position) {
        pie->extAnnotPosition = position;
        traverse();
        const Strings values = texts(pie, "extAnnotValue");
        ASSERT_EQ(values.size(), 12u);
        EXPECT_EQ(values.front(), "1.0 kg");
        EXPECT_EQ(texts(pie, "extAnnotText")[2], "three");
        // The boxes, axis-aligned outside, keep apart and off the disc.
        std::vector<SbBox3f> boxes;
        for (SoCoordinate3* corners : findAll<SoCoordinate3>(pie->getPart("extAnnotBox", FALSE))) {
            SbBox3f box;
            for (int k = 0; k < corners->point.getNum(); ++k)
                box.extendBy(corners->point[k]);
            boxes.push_back(box);
        }
        ASSERT_EQ(boxes.size(), 12u);
        for (size_t i = 0; i < boxes.size(); ++i) {
            const SbVec3f nearest(
                std::max(boxes[i].getMin()[0], std::min(0.0f, boxes[i].getMax()[0])),
                std::max(boxes[i].getMin()[1], std::min(0.0f, boxes[i].getMax()[1])), 0.0f);
            EXPECT_GE(nearest.length(), 1.0f) << position << " " << i;
            for (size_t j = 0; j < i; ++j) {
                const bool apart = boxes[i].getMin()[0] >= boxes[j].getMax()[0] ||
                                   boxes[j].getMin()[0] >= boxes[i].getMax()[0] ||
                                   boxes[i].getMin()[1] >= boxes[j].getMax()[1] ||
                                   boxes[j].getMin()[1] >= boxes[i].getMax()[1];
                EXPECT_TRUE(apart) << position << ": " << i << " covers " << j;
            }
        }
        EXPECT_EQ(findAll<SoCoordinate3>(pie->getPart("arrow", FALSE)).size(), 24u);
    }
    pie->arrowVisibility = FALSE;
    traverse();
    EXPECT_EQ(pie->getPart("arrow", FALSE), nullptr);
    pie->setFormat(nullptr);
}

TEST_F(PoPieChartTest, BadInputIsReportedAndDrawnAround) {
    ErrorRecorder errors;
    PoPieChart2D* pie = addPie({1, NAN, 2});
    pie->sliceToTranslateNumber.setValues(0, 3, std::vector<short>{1, 7, 3}.data());
    pie->sliceToTranslateValue.setValues(0, 2, std::vector<float>{0.5f, 0.5f}.data());
    pie->sliceAngleStep = 0;
    traverse();
    EXPECT_TRUE(errors.contains("slice value 2 is not a number; it counts as 0"));
    EXPECT_TRUE(errors.contains("slice 7 to translate does not exist; it is ignored"));
    EXPECT_TRUE(errors.contains("slice 3 to translate has no distance; it stays in place"));
    EXPECT_TRUE(errors.contains("sliceAngleStep 0 is not a positive number"));
    ASSERT_EQ(fans(pie).size(), 2u);
    // Slice 1 is pulled out, slice 3 is not; the default step is used.
    EXPECT_GT(fans(pie)[0]->point[0].length(), 0.4f);
    EXPECT_EQ(fans(pie)[1]->point[0], SbVec3f(0, 0, 0));
    EXPECT_EQ(fans(pie)[1]->point.getNum(), 2 + 120);

    pie->sliceAngleStep = 1e-9f;
    traverse();
    EXPECT_TRUE(errors.contains("cuts a circle into more than 10000 steps"));
    EXPECT_LE(fans(pie)[1]->point.getNum(), 2 + 6667);

    for (float radius : {0.0f, -1.0f, NAN}) {
        errors.clear();
        pie->radius = radius;
        traverse();
        EXPECT_TRUE(errors.contains("is not a positive number; the pie is not drawn")) << radius;
        EXPECT_EQ(pie->getPart("slice", FALSE), nullptr);
    }
    pie->radius = 1;
    pie->center.setValue(NAN, 0);
    traverse();
    EXPECT_TRUE(errors.contains("the centre is not a number"));
    EXPECT_EQ(pie->getPart("slice", FALSE), nullptr);
}

TEST_F(PoPieChartTest, TheConstructorFillsTheSliceFields) {
    const char* names[] = {"x", "y"};
    const float values[] = {1, 3};
    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 0, 1)};
    auto* pie = new PoPieChart2D(SbVec2f(2, 1), 0.5f, 2, names, values, 2, colors);
    root->addChild(pie);
    EXPECT_EQ(pie->center.getValue(), SbVec2f(2, 1));
    EXPECT_EQ(pie->sliceText.getNum(), 2);
    EXPECT_EQ(pie->sliceColor[1], colors[1]);
    EXPECT_TRUE(pie->sliceAngleStep.isDefault());
}

// ---------------------------------------------------------------- render

// A pie of radius 1 about the origin in a 200 x 200 picture of -2..2.
TEST_F(PoPieChartTest, SlicesAndBoxesAreDrawnWhereTheyStand) {
    QUILLON_REQUIRE_RENDERING();
    root->addChild(orthographicCamera(SbVec3f(0, 0, 5), 4));
    PoPieChart2D* pie = addPie({25, 75}, {"a", "b"});
    const SbColor colors[] = {SbColor(1, 0, 0), SbColor(0, 0, 1)};
    pie->sliceColor.setValues(0, 2, colors);
    pie->intAnnotValueVisibility = FALSE;
    pie->setSliceToTranslate(1, 0.5f);
    const RenderImage image = renderHeadless(root, smallPicture(200, 200));
    auto pixel = [&](float x, float y) {
        return image.pixel(static_cast<int>((x + 2) * 50), static_cast<int>((2 - y) * 50));
    };
    // The first quarter pulled out by 0.5 along 45 degrees, the rest in place.
    EXPECT_TRUE(isNear(pixel(0.9f, 0.9f), Rgb{255, 0, 0}, 8));
    EXPECT_TRUE(isNear(pixel(0.15f, 0.15f), Rgb{0, 0, 0}, 8));
    EXPECT_TRUE(isNear(pixel(-0.5f, -0.5f), Rgb{0, 0, 255}, 8));
    EXPECT_TRUE(isNear(pixel(0.5f, -0.2f), Rgb{0, 0, 255}, 8));
    // Two white boxes outside the disc, one on each side, none inside.
    int right = 0, left = 0, inside = 0;
    for (int y = 0; y < 200; ++y) {
        for (int x = 0; x < 200; ++x) {
            if (!isNear(image.pixel(x, y), Rgb{255, 255, 255}, 8))
                continue;
            const SbVec2f point(x / 50.0f - 2, 2 - y / 50.0f);
            if (point.length() < 1.0f)
                ++inside;
            else
                (point[0] < 0 ? left : right) += 1;
        }
    }
    EXPECT_GT(right, 10);
    EXPECT_GT(left, 10);
    EXPECT_EQ(inside, 0);
}

} // namespace
