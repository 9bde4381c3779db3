#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PbNumericDisplayFormat.h>
#include <Quillon/graph/PoLinearAxis.h>
#include <Quillon/nodes/PoNumericDisplayFormat.h>

#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneIO.h"
#include "support/SceneSearch.h"

#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoFont.h>

#include <string>
#include <vector>

namespace {

using Strings = std::vector<std::string>;

class PoLinearAxisTest : public SceneTest {
protected:
    PoLinearAxis* addAxis(PoLinearAxis* axis = new PoLinearAxis) {
        root->addChild(axis);
        return axis;
    }
    static Strings partTexts(PoLinearAxis* axis, const char* part) {
        return textsBelow(axis->getPart(part, FALSE));
    }
};

// The default axis is graduated every fifth; the added string is appended
// in Latin-1 (the euro sign has none); 0.1 + 6 * 0.1 lands a rounding
// beyond 0.7, so that graduation falls outside the axis and ends the list.
TEST_F(PoLinearAxisTest, GraduationTextsFollowTheAxisSettings) {
    const struct {
        PoLinearAxis* axis;
        const char* addString;
        Strings texts;
    } cases[] = {
        {new PoLinearAxis, nullptr, {"0.0", "0.2", "0.4", "0.6", "0.8", "1.0"}},
        {new PoLinearAxis(SbVec3f(0, 0, 0), 2, PoCartesianAxis::XY, 1),
         " \u00B0C \u20AC",
         {"0 \u00B0C ?", "1 \u00B0C ?", "2 \u00B0C ?"}},
        {new PoLinearAxis(SbVec3f(0, 0, 0), 1, PoCartesianAxis::XY, 0.1f, 0.7f, 0.1f),
         nullptr,
         {"0.1", "0.2", "0.3", "0.4", "0.5", "0.6"}},
    };
    for (const auto& c : cases) {
        PoLinearAxis* axis = addAxis(c.axis);
        if (c.addString) {
            axis->gradAddString = c.addString;
            axis->gradAddStringVisibility = PoAxis::VISIBILITY_ON;
        }
        traverse();
        EXPECT_EQ(partTexts(axis, "mainGradText"), c.texts);
        EXPECT_TRUE(partTexts(axis, "multFactor").empty());
        EXPECT_NE(axis->getPart("arrow", FALSE), nullptr);
        EXPECT_EQ(axis->getPart("title", FALSE), nullptr);
        EXPECT_EQ(axis->getPart("mainGradGrid", FALSE), nullptr);
    }
    EXPECT_FLOAT_EQ(cases[0].axis->getStep(), 0.2f);
}

TEST_F(PoLinearAxisTest, ACommonPowerOfTenBecomesAMultiplicationFactor) {
    PoLinearAxis* axis =
        addAxis(new PoLinearAxis(SbVec3f(0, 0, 0), 1, PoCartesianAxis::XY, 0, 5000));
    PoLinearAxis::MultFactorPosition position;
    float distance;
    axis->getMultFactor(position, distance);
    EXPECT_EQ(position, PoLinearAxis::MULT_FACTOR_END);
    EXPECT_FLOAT_EQ(distance, 0.0f);
    traverse();
    EXPECT_FLOAT_EQ(axis->getStep(), 1000.0f);
    EXPECT_EQ(partTexts(axis, "mainGradText"), (Strings{"0", "1", "2", "3", "4", "5"}));
    EXPECT_EQ(partTexts(axis, "multFactor"), (Strings{"x10", "3"}));
    // The factor stands level with the graduation texts.
    axis->getMultFactor(position, distance);
    PoAxis::Visibility visibility, addVisibility;
    PoAxis::GradPosition gradPosition;
    PoAxis::TextPath path;
    SbString font, add;
    float size, gradDistance;
    axis->getGrad(visibility, gradPosition, path, font, size, gradDistance, addVisibility, add);
    EXPECT_FLOAT_EQ(distance, gradDistance);

    const struct {
        PoLinearAxis::MultFactorPosition position;
        Strings factor;
        const char* firstText;
    } cases[] = {{PoLinearAxis::MULT_FACTOR_START, {"x10", "3"}, "0"},
                 {PoLinearAxis::MULT_FACTOR_EXTR, {"x10", "3", "x10", "3"}, "0"},
                 {PoLinearAxis::MULT_FACTOR_GRAD, {}, "0E3"}};
    for (const auto& c : cases) {
        axis->multFactorPosition = c.position;
        traverse();
        EXPECT_EQ(partTexts(axis, "multFactor"), c.factor) << c.position;
        EXPECT_EQ(partTexts(axis, "mainGradText").front(), c.firstText) << c.position;
    }
    // Without a power of ten there is nothing to show or append.
    axis->gradEnd = 5;
    traverse();
    EXPECT_EQ(partTexts(axis, "mainGradText").back(), "5");
}

TEST_F(PoLinearAxisTest, NumberFormatsComeFromTheKitOrTheState) {
    auto* node = new PoNumericDisplayFormat;
    node->formatType = PbNumericDisplayFormat::FLOAT_FORMAT;
    node->numDecimal = 2;
    root->addChild(node);
    PoLinearAxis* axis = addAxis(new PoLinearAxis(SbVec3f(0, 0, 0), 2, PoCartesianAxis::XY, 1));
    traverse();
    EXPECT_EQ(partTexts(axis, "mainGradText"), (Strings{"0.00", "1.00", "2.00"}));
    // A change of the node above rebuilds the axis.
    node->numDecimal = 1;
    traverse();
    EXPECT_EQ(partTexts(axis, "mainGradText").back(), "2.0");
    PbNumericDisplayFormat own(PbNumericDisplayFormat::INTEGER_FORMAT, -1, 0);
    axis->setFormat(&own);
    traverse();
    EXPECT_EQ(partTexts(axis, "mainGradText"), (Strings{"0", "10", "20"}));
    own.setFormat(PbNumericDisplayFormat::INTEGER_FORMAT, 0, 0);
    traverse();
    EXPECT_EQ(partTexts(axis, "mainGradText").back(), "2");
    axis->setFormat(nullptr);
    EXPECT_EQ(axis->getFormat(), nullptr);
}

TEST_F(PoLinearAxisTest, TextAttributesGiveTheFontAndAreForgottenWhenDestroyed) {
    PoLinearAxis* axis = addAxis();
    auto* attributes = new PbMiscTextAttr;
    attributes->setFontName("Serif");
    axis->setMiscTextAttr(attributes);
    axis->gradFontName = "";
    traverse();
    const std::vector<SoFont*> fonts = findAll<SoFont>(axis->getPart("mainGradText", FALSE));
    ASSERT_FALSE(fonts.empty());
    EXPECT_STREQ(fonts.front()->name.getValue().getString(), "Serif");
    axis->gradFontName = "Sans";
    traverse();
    EXPECT_STREQ(
        findAll<SoFont>(axis->getPart("mainGradText", FALSE)).front()->name.getValue().getString(),
        "Sans");
    delete attributes;
    EXPECT_EQ(axis->getMiscTextAttr(), nullptr);
    EXPECT_TRUE(axis->isModified());
}

TEST_F(PoLinearAxisTest, ConstructorsWriteOnlyTheFieldsThatDiffer) {
    auto* plain = new PoLinearAxis;
    auto* placed = new PoLinearAxis(SbVec3f(0, 0, 0), 3, PoCartesianAxis::XY, 0.5f);
    auto* valued = new PoLinearAxis(SbVec3f(1, 0, 0), 1, PoCartesianAxis::YX, 0, 10);
    for (PoLinearAxis* axis : {plain, placed, valued})
        axis->ref();
    const SoField* plainFields[] = {&plain->start,     &plain->end,     &plain->type,
                                    &plain->gradStart, &plain->gradEnd, &plain->step};
    for (const SoField* field : plainFields)
        EXPECT_TRUE(field->isDefault());
    EXPECT_TRUE(placed->start.isDefault());
    EXPECT_TRUE(placed->type.isDefault());
    EXPECT_FALSE(placed->end.isDefault());
    EXPECT_FLOAT_EQ(placed->step.getValue(), 0.5f);
    EXPECT_TRUE(valued->end.isDefault());
    EXPECT_TRUE(valued->gradStart.isDefault());
    EXPECT_FLOAT_EQ(valued->gradEnd.getValue(), 10.0f);
    EXPECT_EQ(valued->type.getValue(), PoCartesianAxis::YX);
    for (PoLinearAxis* axis : {plain, placed, valued})
        axis->unref();
}

TEST_F(PoLinearAxisTest, BadInputIsReportedAndDrawnAround) {
    ErrorRecorder errors;
    PoLinearAxis* axis = addAxis();
    axis->end = 0;
    traverse();
    EXPECT_TRUE(errors.contains("the axis starts and ends at 0; it is not drawn"));
    EXPECT_EQ(axis->getPart("body", FALSE), nullptr);
    EXPECT_TRUE(axis->getMainGradCoords().empty());

    axis->end = NAN;
    traverse();
    EXPECT_TRUE(errors.contains("start, end, gradStart and gradEnd must be numbers"));
    EXPECT_EQ(axis->getPart("body", FALSE), nullptr);

    // A step of the wrong sign is turned; a step that is not a number is
    // chosen automatically; a tiny one draws a capped number.
    axis->end = 1;
    axis->step = -0.25f;
    traverse();
    EXPECT_EQ(axis->getMainGradCoords().size(), 5u);
    axis->step = NAN;
    traverse();
    EXPECT_FLOAT_EQ(axis->getStep(), 0.2f);
    axis->step = 1e-7f;
    traverse();
    EXPECT_EQ(axis->getMainGradCoords().size(), 5000u);
    EXPECT_TRUE(errors.contains("only the first 5000 are drawn"));

    // Equal graduation values: the coordinates are the values.
    axis->step = 0.25f;
    axis->gradStart = 3;
    axis->gradEnd = 3;
    traverse();
    EXPECT_EQ(partTexts(axis, "mainGradText"), (Strings{"0.00", "0.25", "0.50", "0.75", "1.00"}));
}

// The toolkit's reader refuses a number in an enumerated field; a value
// set from code that is none of the field's values falls back to the
// default.
TEST_F(PoLinearAxisTest, UnknownEnumValuesFallBackToTheDefaults) {
    ErrorRecorder errors;
    EXPECT_EQ(SceneIO::read("#Inventor V2.1 ascii\nPoLinearAxis { gradPosition 7 }\n"), nullptr);
    PoLinearAxis* axis = addAxis();
    axis->gradPosition.setValue(7);
    axis->type.setValue(9);
    axis->gradFit.setValue(-4);
    traverse();
    PoAxis::Visibility visibility, addVisibility;
    PoAxis::GradPosition position;
    PoAxis::TextPath path;
    SbString font, add;
    float size, distance;
    axis->getGrad(visibility, position, path, font, size, distance, addVisibility, add);
    EXPECT_EQ(position, PoAxis::GRAD_BELOW);
    EXPECT_EQ(axis->getMainGradCoords().size(), 6u);
    EXPECT_TRUE(errors.contains("PoLinearAxis::rebuild(): gradPosition holds 7"));
    EXPECT_TRUE(errors.contains("type holds 9"));
    EXPECT_TRUE(errors.contains("gradFit holds -4"));
}

// ---------------------------------------------------------------- render

// An axis from 0 to 10 along X at y = 0, seen by a camera whose picture
// spans x from -2 to 12 and y from -7 to 7 on 280 x 280 pixels.
TEST_F(PoLinearAxisTest, TicksAndTextsAreDrawnWhereTheCoordinatesSay) {
    QUILLON_REQUIRE_RENDERING();
    root->addChild(orthographicCamera(SbVec3f(5, 0, 5), 14));
    auto* colour = new SoBaseColor;
    colour->rgb.setValue(1, 1, 1);
    root->addChild(colour);
    auto* domain = new PbDomain(0, 0, 10, 10);
    PoLinearAxis* axis = addAxis(new PoLinearAxis(SbVec3f(0, 0, 0), 10, PoCartesianAxis::XY, 2));
    axis->setDomain(domain);
    axis->tickMainLength = 0.05f;
    axis->gradFontSize = 0.06f;
    const RenderImage image = renderHeadless(root, smallPicture(280, 280));
    auto column = [](float x) { return static_cast<int>((x + 2.0f) * 20.0f); };
    auto row = [](float y) { return static_cast<int>((7.0f - y) * 20.0f); };
    const Rgb black{0, 0, 0};
    // Whether anything is drawn in the window of columns and rows.
    auto drawn = [&](int x0, int x1, int y0, int y1) {
        for (int x = x0; x <= x1; ++x)
            for (int y = y0; y <= y1; ++y)
                if (!isNear(image.pixel(x, y), black, 60))
                    return true;
        return false;
    };
    int lit = 0;
    for (float c : axis->getMainGradCoords()) {
        // The tick, half a unit long, below the axis; nothing between two.
        EXPECT_TRUE(drawn(column(c) - 1, column(c) + 1, row(-0.3f), row(-0.3f))) << c;
        EXPECT_FALSE(drawn(column(c + 1) - 1, column(c + 1) + 1, row(-0.3f), row(-0.3f))) << c;
        // Its text below it.
        lit += drawn(column(c) - 5, column(c) + 5, row(-0.9f), row(-1.3f));
    }
    EXPECT_EQ(lit, 6);
    // Nothing above the axis but the arrow's tip.
    EXPECT_TRUE(isNear(image.pixel(column(5), row(1)), black, 8));
    root->removeAllChildren();
    delete domain;
}

} // namespace
