#include "graph/PiText.h"
#include <Quillon/graph/PbMiscTextAttr.h>
#include <Quillon/graph/PoBase.h>

#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"
#include "support/SceneSearch.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/elements/SoTextOutlineEnabledElement.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoAnnotation.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCallback.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoText3.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

Lines linesOf(const PiText& text, const char* string) {
    Lines lines;
    for (const SbString& line : text.getLines(string))
        lines.emplace_back(line.getString());
    return lines;
}

class PiTextTest : public LibraryTest {
protected:
    void TearDown() override {
        PoBase::setTextType(PoBase::SO_ANNO_TEXT3);
        PoBase::setVRML2Mode(0);
        LibraryTest::TearDown();
    }
};

TEST_F(PiTextTest, BreaksLinesAtTheBreakCharacterWithinTheLength) {
    struct Case {
        const char* text;
        char breakChar;
        int length;
        Lines lines;
    };
    const Case cases[] = {
        {"one two three", ' ', 0, {"one two three"}},
        {"one two three", ' ', 7, {"one two", "three"}},
        {"one two three", ' ', 6, {"one", "two", "three"}},
        {"one two three", ' ', 13, {"one two three"}},
        {"a-bb-ccc", '-', 4, {"a-bb", "ccc"}},
        {"Temperature (degrees)", ' ', 5, {"Temperature", "(degrees)"}},
        {"up\ndown and out", ' ', 8, {"up", "down and", "out"}},
        {"first\nsecond", ' ', 0, {"first", "second"}},
        {"", ' ', 4, {""}},
        {"\xC3\xA9t\xC3\xA9 hiver", ' ', 4, {"\xC3\xA9t\xC3\xA9", "hiver"}},
    };
    PiText text;
    for (const Case& c : cases) {
        text.setLineBreak(c.breakChar, c.length);
        EXPECT_EQ(linesOf(text, c.text), c.lines) << '"' << c.text << "\" at " << c.length;
    }
}

TEST_F(PiTextTest, TakesFontAndLineBreakingFromTheTextAttributes) {
    PbMiscTextAttr attributes;
    attributes.setFontName("Serif");
    attributes.setLineLength('/', 3);
    PiText text;
    text.setMiscTextAttr(&attributes);
    EXPECT_STREQ(text.getFontName().getString(), "Serif");
    EXPECT_EQ(linesOf(text, "ab/cd"), (Lines{"ab", "cd"}));
    text.setFontName("Sans");
    text.setMiscTextAttr(nullptr);
    EXPECT_STREQ(text.getFontName().getString(), "Sans");
    text.setFontName("");
    EXPECT_STREQ(text.getFontName().getString(), "defaultFont");
}

TEST_F(PiTextTest, MeasuresInProportionToTheSize) {
    PiText text;
    const float width = text.getWidth("12.5");
    const SbBox2f box = text.getBox("10");
    EXPECT_GT(width, 1.0f);
    // Digits stand the cap height above the baseline.
    EXPECT_NEAR(box.getMax()[1], PiText::CAP_HEIGHT, 0.01f);
    EXPECT_NEAR(text.getWidth("00"), 2.0f * text.getWidth("0"), 0.01f);

    text.setFontSize(0.25f);
    EXPECT_NEAR(text.getWidth("12.5"), 0.25f * width, 1e-4f);
    EXPECT_FLOAT_EQ(text.getHeight("one"), 0.25f * PiText::CAP_HEIGHT);
    EXPECT_FLOAT_EQ(text.getHeight("one\ntwo\nthree"), 0.25f * (2.0f + PiText::CAP_HEIGHT));
    // The widest line gives the width.
    EXPECT_FLOAT_EQ(text.getWidth("1\n12.5\n1"), text.getWidth("12.5"));
}

// For each path, the side of the anchor on which each side puts the text:
// the box's edge toward the anchor lies on it, and the text is centred
// across.
TEST_F(PiTextTest, SidesPutTheTextBesideItsAnchorWhateverThePath) {
    const PiText::Path paths[] = {PiText::PATH_RIGHT, PiText::PATH_LEFT, PiText::PATH_UP,
                                  PiText::PATH_DOWN};
    const struct {
        PiText::Side side;
        SbVec2f direction;
    } sides[] = {{PiText::SIDE_RIGHT, SbVec2f(1, 0)},
                 {PiText::SIDE_ABOVE, SbVec2f(0, 1)},
                 {PiText::SIDE_LEFT, SbVec2f(-1, 0)},
                 {PiText::SIDE_BELOW, SbVec2f(0, -1)}};
    PiText text;
    const float tolerance = 0.03f;
    for (bool mirrored : {false, true})
        for (PiText::Path path : paths) {
            text.setMirrored(mirrored);
            text.setPath(path);
            const std::string what =
                "path " + std::to_string(path) + (mirrored ? " mirrored" : "") + " side ";
            for (const auto& side : sides) {
                text.setSide(side.side);
                const SbBox2f box = text.getBox("150");
                SbVec2f center;
                box.getCenter().getValue(center[0], center[1]);
                const int along = side.direction[0] != 0 ? 0 : 1;
                const float nearEdge =
                    side.direction[along] > 0 ? box.getMin()[along] : box.getMax()[along];
                EXPECT_NEAR(nearEdge, 0.0f, tolerance) << what << side.side;
                EXPECT_GT(center[along] * side.direction[along], 0.2f) << what << side.side;
                EXPECT_NEAR(center[1 - along], 0.0f, tolerance) << what << side.side;
            }
            text.setSide(PiText::SIDE_CENTER);
            SbVec2f center;
            text.getBox("150").getCenter().getValue(center[0], center[1]);
            EXPECT_NEAR(center.length(), 0.0f, tolerance) << what;
            // Two sides: the corner of the box at the anchor.
            text.setSide(PiText::SIDE_LEFT, PiText::SIDE_ABOVE);
            const SbBox2f corner = text.getBox("150");
            EXPECT_NEAR(corner.getMax()[0], 0.0f, tolerance) << what << "left and above";
            EXPECT_NEAR(corner.getMin()[1], 0.0f, tolerance) << what << "left and above";
        }
}

SbBox3f boundsOf(SoNode* node) {
    SoGetBoundingBoxAction action(SbViewportRegion(1, 1));
    action.apply(node);
    return action.getBoundingBox();
}

TEST_F(PiTextTest, ExponentsStandRaisedAfterTheirTextAndJustifyWithIt) {
    PiText text;
    text.setSide(PiText::SIDE_RIGHT);
    SoNode* node = text.buildWithExponent("x10", "3", SbVec3f(1, 2, 0));
    node->ref();
    ASSERT_EQ(node->getChildren()->getLength(), 2);
    const SbBox3f base = boundsOf((*node->getChildren())[0]);
    const SbBox3f exponent = boundsOf((*node->getChildren())[1]);
    // Both together start at the anchor and are centred on it vertically.
    EXPECT_NEAR(base.getMin()[0], 1.0f, 0.03f);
    EXPECT_NEAR(0.5f * (base.getMin()[1] + exponent.getMax()[1]), 2.0f, 0.03f);
    EXPECT_NEAR(exponent.getMin()[0], base.getMin()[0] + text.getWidth("x10"), 0.03f);
    EXPECT_GT(exponent.getMin()[1], base.getMin()[1] + 0.3f);
    EXPECT_GT(exponent.getMax()[1], base.getMax()[1] + 0.15f);
    EXPECT_LT(exponent.getMax()[1] - exponent.getMin()[1], base.getMax()[1] - base.getMin()[1]);
    // The measured box is what both cover.
    const SbBox2f measured = text.getBoxWithExponent("x10", "3");
    EXPECT_NEAR(measured.getMin()[0] + 1, base.getMin()[0], 0.03f);
    EXPECT_NEAR(measured.getMax()[0] + 1, exponent.getMax()[0], 0.03f);
    EXPECT_NEAR(measured.getMin()[1] + 2, base.getMin()[1], 0.03f);
    EXPECT_NEAR(measured.getMax()[1] + 2, exponent.getMax()[1], 0.03f);
    node->unref();
}

TEST_F(PiTextTest, CornersFollowTheAngleAndTheMargin) {
    PiText text;
    text.setSide(PiText::SIDE_CENTER);
    const SbBox2f box = text.getBox("42");
    SbVec3f corners[4];
    text.getCorners("42", SbVec3f(5, 1, 2), static_cast<float>(M_PI_2), 0.1f, corners);
    // A quarter turn: the first corner (low x, low y) goes to (-low y, low x).
    EXPECT_NEAR(corners[0][0], 5 - (box.getMin()[1] - 0.1f), 1e-5f);
    EXPECT_NEAR(corners[0][1], 1 + box.getMin()[0] - 0.1f, 1e-5f);
    EXPECT_FLOAT_EQ(corners[0][2], 2.0f);
    EXPECT_NEAR((corners[2] - corners[0]).length(),
                (box.getMax() - box.getMin() + SbVec2f(0.2f, 0.2f)).length(), 1e-5f);
}

TEST_F(PiTextTest, ReadableAnglesNeverTurnTheTextUpsideDown) {
    const float pi = static_cast<float>(M_PI);
    const struct {
        float angle, readable;
    } cases[] = {{0, 0},
                 {0.3f, 0.3f},
                 {pi, 0},
                 {0.75f * pi, -0.25f * pi},
                 {-pi / 2, pi / 2},
                 {pi / 2, pi / 2},
                 {2.3f * pi, 0.3f * pi},
                 {-0.6f * pi, 0.4f * pi},
                 {NAN, 0}};
    for (const auto& c : cases)
        EXPECT_NEAR(PiText::readableAngle(c.angle), c.readable, 1e-5f) << c.angle;
}

TEST_F(PiTextTest, ConvertsLatin1AndTakesStrayBytesAsLatin1) {
    EXPECT_STREQ(PiText::fromLatin1("\xB0"
                                    "C")
                     .getString(),
                 "\xC2\xB0"
                 "C");
    EXPECT_STREQ(PiText::toLatin1("\xC2\xB0"
                                  "C \xE2\x82\xAC")
                     .getString(),
                 "\xB0"
                 "C ?");
    PiText text;
    // A Latin-1 degree sign measures as the UTF-8 one.
    EXPECT_FLOAT_EQ(text.getWidth("20\xB0"), text.getWidth("20\xC2\xB0"));
    EXPECT_EQ(linesOf(text, "\xE9t\xE9"), (Lines{"\xC3\xA9t\xC3\xA9"}));
}

TEST_F(PiTextTest, RefusesBadSettingsAndKeepsItsOwn) {
    ErrorRecorder errors;
    PiText text;
    text.setFontSize(2.0f);
    text.setPath(PiText::PATH_UP);
    for (float size : {0.0f, -1.0f, NAN, INFINITY})
        text.setFontSize(size);
    text.setPath(static_cast<PiText::Path>(7));
    text.setJustification(static_cast<PiText::HorizontalJustification>(-1), PiText::JUSTIFY_TOP);
    text.setSide(static_cast<PiText::Side>(9));
    text.setSide(PiText::SIDE_ABOVE, static_cast<PiText::Side>(-2));
    EXPECT_EQ(errors.messages().size(), 8u);
    EXPECT_TRUE(errors.contains("PiText::setFontSize(): font size 0 is not a positive number"));
    EXPECT_FLOAT_EQ(text.getFontSize(), 2.0f);
    EXPECT_EQ(text.getPath(), PiText::PATH_UP);
    EXPECT_EQ(text.getVerticalJustification(), PiText::JUSTIFY_BOTTOM);
}

// Depth of the geometry that the toolkit generates for the text.
float extrusionDepth(SoNode* node) {
    SbBox3f box;
    SoCallbackAction action;
    action.addTriangleCallback(
        SoText3::getClassTypeId(),
        [](void* data, SoCallbackAction*, const SoPrimitiveVertex* a, const SoPrimitiveVertex* b,
           const SoPrimitiveVertex* c) {
            for (const SoPrimitiveVertex* v : {a, b, c})
                static_cast<SbBox3f*>(data)->extendBy(v->getPoint());
        },
        &box);
    action.apply(node);
    return box.getMax()[2] - box.getMin()[2];
}

// Annotation texts are flat and drawn over the scene; 3D texts have a
// light model of their own and, with the predefined profile, a shallow
// extrusion.
TEST_F(PiTextTest, TextTypeAndVrml2ModeChooseAnnotationOr3DText) {
    const struct {
        PoBase::TextType type;
        int vrml2, predefinedProfile;
        bool annotation, extruded;
    } cases[] = {{PoBase::SO_ANNO_TEXT3, 0, 1, true, false},
                 {PoBase::SO_TEXT3, 0, 1, false, true},
                 {PoBase::SO_ANNO_TEXT3, 1, 1, false, true},
                 {PoBase::SO_TEXT3, 0, 0, false, false}};
    PbMiscTextAttr attributes;
    for (const auto& c : cases) {
        PoBase::setTextType(c.type);
        PoBase::setVRML2Mode(c.vrml2);
        attributes.enablePredefinedProfile(c.predefinedProfile);
        PiText text;
        text.setMiscTextAttr(&attributes);
        text.setFontSize(2.0f);
        SoNode* node = text.build("8", SbVec3f(0, 0, 0));
        node->ref();
        EXPECT_EQ(node->isOfType(SoAnnotation::getClassTypeId()), c.annotation);
        EXPECT_EQ(findAll<SoLightModel>(node).empty(), c.annotation);
        const float depth = extrusionDepth(node);
        if (c.extruded) {
            EXPECT_GT(depth, 0.05f * 2.0f);
            EXPECT_LT(depth, 0.25f * 2.0f);
        } else {
            EXPECT_FLOAT_EQ(depth, 0.0f);
        }
        node->unref();
    }
}

// ---------------------------------------------------------------- render

struct TextScene {
    static constexpr int pixels = 200;
    static constexpr float viewHeight = 4.0f;

    TextScene() : root(new SoSeparator) {
        root->ref();
        root->addChild(orthographicCamera(SbVec3f(0, 0, 5), viewHeight));
        auto* lighting = new SoLightModel;
        lighting->model = SoLightModel::BASE_COLOR;
        root->addChild(lighting);
        auto* colour = new SoBaseColor;
        colour->rgb.setValue(1, 1, 1);
        root->addChild(colour);
    }
    ~TextScene() { root->unref(); }

    static float column(float x) { return (x + 0.5f * viewHeight) / viewHeight * pixels; }
    static float row(float y) { return (0.5f * viewHeight - y) / viewHeight * pixels; }

    SoSeparator* root;
};

TEST_F(PiTextTest, MeasuredBoxesAgreeWithTheDrawnPixels) {
    QUILLON_REQUIRE_RENDERING();
    const struct {
        PoBase::TextType type;
        PiText::Path path;
        PiText::Side side;
        const char* string;
    } cases[] = {
        {PoBase::SO_ANNO_TEXT3, PiText::PATH_RIGHT, PiText::SIDE_CENTER, "-12.50"},
        {PoBase::SO_ANNO_TEXT3, PiText::PATH_UP, PiText::SIDE_LEFT, "4096"},
        {PoBase::SO_TEXT3, PiText::PATH_DOWN, PiText::SIDE_BELOW, "Hg 7"},
        {PoBase::SO_ANNO_TEXT3, PiText::PATH_RIGHT, PiText::SIDE_ABOVE, "two\nlines"},
    };
    // The pixel grid, and the glyphs' side bearings.
    const float tolerance = 1.5f;
    for (const auto& c : cases) {
        PoBase::setTextType(c.type);
        PiText text;
        text.setFontSize(0.5f);
        text.setPath(c.path);
        text.setSide(c.side);
        const SbVec3f anchor(-0.3f, 0.2f, 0.0f);
        TextScene scene;
        scene.root->addChild(text.build(c.string, anchor));
        const PixelRect drawn = drawnExtent(
            renderHeadless(scene.root, smallPicture(TextScene::pixels, TextScene::pixels)),
            Rgb{0, 0, 0});
        ASSERT_FALSE(drawn.empty()) << c.string;
        const SbBox2f box = text.getBox(c.string);
        const std::string what = std::string(c.string) + " path " + std::to_string(c.path);
        EXPECT_NEAR(drawn.x0, TextScene::column(anchor[0] + box.getMin()[0]), tolerance) << what;
        EXPECT_NEAR(drawn.x1 + 1, TextScene::column(anchor[0] + box.getMax()[0]), tolerance)
            << what;
        EXPECT_NEAR(drawn.y0, TextScene::row(anchor[1] + box.getMax()[1]), tolerance) << what;
        EXPECT_NEAR(drawn.y1 + 1, TextScene::row(anchor[1] + box.getMin()[1]), tolerance) << what;
    }
}

void setOutlining(void* data, SoAction* action) {
    if (action->isOfType(SoGLRenderAction::getClassTypeId()))
        SoTextOutlineEnabledElement::set(action->getState(), nullptr, data != nullptr);
}

TEST_F(PiTextTest, OutliningDrawsTheGlyphEdgesWhenTheElementIsOn) {
    QUILLON_REQUIRE_RENDERING();
    int lit[2];
    for (int outline = 0; outline < 2; ++outline) {
        TextScene scene;
        auto* setter = new SoCallback;
        setter->setCallback(&setOutlining, outline ? scene.root : nullptr);
        scene.root->addChild(setter);
        PiText text;
        text.setFontSize(0.3f);
        text.setSide(PiText::SIDE_CENTER);
        scene.root->addChild(text.build("0.123456789", SbVec3f(0, 0, 0)));
        lit[outline] = countPixelsNear(
            renderHeadless(scene.root, smallPicture(TextScene::pixels, TextScene::pixels)),
            Rgb{255, 255, 255}, 100);
    }
    EXPECT_GT(lit[0], 50);
    EXPECT_GT(lit[1], lit[0] + lit[0] / 20);
}

} // namespace
