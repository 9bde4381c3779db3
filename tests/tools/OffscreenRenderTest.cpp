#include "support/ErrorRecorder.h"
#include "support/HeadlessRender.h"
#include "support/LibraryTest.h"

#include "render/GlxWarningFilter.h"
#include "render/NodeRef.h"
#include "render/SceneFraming.h"
#include "render/SceneGraphCheck.h"
#include "render/SceneRendering.h"

#include <Quillon/PoQuillon.h>

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoDirectionalLight.h>
#include <Inventor/nodes/SoLight.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoScale.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSphere.h>
#include <Inventor/nodes/SoTranslation.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

const Rgb red{255, 0, 0};
const Rgb green{0, 255, 0};
const SbColor slateBlue(0.2f, 0.4f, 0.6f);

class HeadlessRendering : public LibraryTest {
protected:
};

// An unlit cube of one colour, centred at offset.
SoSeparator* flatCube(const SbColor& color, const SbVec3f& offset = SbVec3f(0, 0, 0)) {
    auto* cube = new SoSeparator;
    auto* lightModel = new SoLightModel;
    lightModel->model = SoLightModel::BASE_COLOR;
    auto* baseColor = new SoBaseColor;
    baseColor->rgb = color;
    auto* translation = new SoTranslation;
    translation->translation = offset;
    cube->addChild(lightModel);
    cube->addChild(baseColor);
    cube->addChild(translation);
    cube->addChild(new SoCube);
    return cube;
}

SoOrthographicCamera* frontCamera(float height) {
    return orthographicCamera(SbVec3f(0, 0, 10), height);
}

int countOfType(SoNode* scene, SoType type) {
    SoSearchAction search;
    search.setType(type);
    search.setInterest(SoSearchAction::ALL);
    search.apply(scene);
    return search.getPaths().getLength();
}

int grey(const Rgb& color) {
    return (color.r + color.g + color.b) / 3;
}

} // namespace

TEST_F(HeadlessRendering, CameraLessSceneIsFramedAndCentred) {
    QUILLON_REQUIRE_RENDERING();
    // Far from the origin: only a camera fitted to the scene sees it.
    NodeRef<SoSeparator> scene = adoptNode(flatCube(SbColor(1, 0, 0), SbVec3f(100, -40, 7)));
    const RenderImage image = renderHeadless(scene.get(), smallPicture(80, 60, slateBlue));
    ASSERT_EQ(image.width(), 80);
    ASSERT_EQ(image.height(), 60);
    EXPECT_TRUE(pixelNear(image, 40, 30, red));
    for (auto [x, y] : {std::pair{0, 0}, {79, 0}, {0, 59}, {79, 59}})
        EXPECT_TRUE(pixelNear(image, x, y, toRgb(slateBlue)));
    EXPECT_GT(countPixelsNear(image, red), 80 * 60 / 10);
}

TEST_F(HeadlessRendering, FramingAddsCameraAndHeadlightOnlyWhenMissing) {
    NodeRef<SoSeparator> bare = adoptNode(flatCube(SbColor(1, 0, 0)));
    const int bareChildren = bare->getNumChildren();
    NodeRef<SoSeparator> framed = frameScene(bare.get(), SbViewportRegion(10, 10));
    EXPECT_EQ(countOfType(framed.get(), SoCamera::getClassTypeId()), 1);
    EXPECT_EQ(countOfType(framed.get(), SoLight::getClassTypeId()), 1);
    EXPECT_EQ(bare->getNumChildren(), bareChildren);
    EXPECT_EQ(countOfType(bare.get(), SoCamera::getClassTypeId()), 0);

    NodeRef<SoSeparator> equipped = adoptNode(new SoSeparator);
    equipped->addChild(frontCamera(4));
    equipped->addChild(new SoDirectionalLight);
    equipped->addChild(new SoCube);
    NodeRef<SoSeparator> reframed = frameScene(equipped.get(), SbViewportRegion(10, 10));
    EXPECT_EQ(countOfType(reframed.get(), SoCamera::getClassTypeId()), 1);
    EXPECT_EQ(countOfType(reframed.get(), SoLight::getClassTypeId()), 1);
}

TEST_F(HeadlessRendering, SceneCameraIsKept) {
    QUILLON_REQUIRE_RENDERING();
    // The 2-unit cube seen 4 units high covers the middle half exactly.
    NodeRef<SoSeparator> scene = adoptNode(new SoSeparator);
    scene->addChild(frontCamera(4));
    scene->addChild(flatCube(SbColor(1, 0, 0)));
    const RenderImage image = renderHeadless(scene.get(), smallPicture(100, 100));
    EXPECT_TRUE(pixelNear(image, 30, 50, red));
    EXPECT_TRUE(pixelNear(image, 20, 50, Rgb{0, 0, 0}));
    EXPECT_NEAR(countPixelsNear(image, red), 50 * 50, 2 * 100);
}

TEST_F(HeadlessRendering, RowsRunTopDown) {
    QUILLON_REQUIRE_RENDERING();
    NodeRef<SoSeparator> scene = adoptNode(new SoSeparator);
    scene->addChild(frontCamera(8));
    scene->addChild(flatCube(SbColor(1, 0, 0), SbVec3f(0, 2.5f, 0)));
    scene->addChild(flatCube(SbColor(0, 1, 0), SbVec3f(0, -2.5f, 0)));
    const RenderImage image = renderHeadless(scene.get(), smallPicture(40, 40));
    EXPECT_TRUE(pixelNear(image, 20, 7, red));
    EXPECT_TRUE(pixelNear(image, 20, 32, green));
}

TEST_F(HeadlessRendering, EmptySceneShowsOnlyTheBackground) {
    QUILLON_REQUIRE_RENDERING();
    NodeRef<SoSeparator> scene = adoptNode(new SoSeparator);
    const RenderImage image = renderHeadless(scene.get(), smallPicture(30, 20, slateBlue));
    EXPECT_TRUE(isAllBackground(image, toRgb(slateBlue), 1));
    EXPECT_FALSE(isAllBackground(image, Rgb{0, 0, 0}));
}

TEST_F(HeadlessRendering, HeadlightLightsShapesOnlyWithoutSceneLights) {
    QUILLON_REQUIRE_RENDERING();
    NodeRef<SoSeparator> lit = adoptNode(new SoSeparator);
    lit->addChild(new SoSphere);
    EXPECT_GT(grey(renderHeadless(lit.get()).pixel(50, 50)), 150);

    auto* darkLight = new SoDirectionalLight;
    darkLight->intensity = 0.0f;
    NodeRef<SoSeparator> dark = adoptNode(new SoSeparator);
    dark->addChild(darkLight);
    dark->addChild(new SoSphere);
    EXPECT_LT(grey(renderHeadless(dark.get()).pixel(50, 50)), 60);
}

TEST_F(HeadlessRendering, OneRendererServesManySizes) {
    QUILLON_REQUIRE_RENDERING();
    NodeRef<SoSeparator> scene = adoptNode(flatCube(SbColor(1, 0, 0)));
    for (auto [width, height] : {std::pair{40, 30}, {90, 70}, {40, 30}}) {
        const RenderImage image = renderHeadless(scene.get(), smallPicture(width, height));
        ASSERT_EQ(image.width(), width);
        ASSERT_EQ(image.height(), height);
        EXPECT_TRUE(pixelNear(image, width / 2, height / 2, red));
        EXPECT_TRUE(pixelNear(image, 0, height - 1, Rgb{0, 0, 0}));
    }
}

TEST_F(HeadlessRendering, AlphaPicturesHaveAClearBackground) {
    QUILLON_REQUIRE_RENDERING();
    NodeRef<SoSeparator> scene = adoptNode(flatCube(SbColor(1, 0, 0)));
    RenderSettings settings = smallPicture(50, 50, slateBlue);
    settings.withAlpha = true;
    const RenderImage image = renderHeadless(scene.get(), settings);
    ASSERT_EQ(image.channels(), 4);
    EXPECT_EQ(image.alpha(0, 0), 0);
    EXPECT_EQ(image.alpha(25, 25), 255);
    EXPECT_TRUE(pixelNear(image, 25, 25, red));
}

TEST_F(HeadlessRendering, RejectsBadRequestsAndStaysUsable) {
    QUILLON_REQUIRE_RENDERING();
    OffscreenRenderer renderer;
    NodeRef<SoSeparator> scene = adoptNode(flatCube(SbColor(1, 0, 0)));
    RenderImage image(1, 1, 3);
    RenderSettings settings = smallPicture(0, 5);
    EXPECT_FALSE(renderer.render(scene.get(), settings, image));
    EXPECT_NE(renderer.error().find("0x5"), std::string::npos) << renderer.error();
    EXPECT_EQ(image.width(), 1);
    EXPECT_FALSE(renderer.render(nullptr, smallPicture(), image));
    EXPECT_NE(renderer.error().find("no scene"), std::string::npos) << renderer.error();

    // The scene carries its own camera here: the renderer draws as given.
    NodeRef<SoSeparator> viewed = adoptNode(new SoSeparator);
    viewed->addChild(frontCamera(4));
    viewed->addChild(scene.get());
    ASSERT_TRUE(renderer.render(viewed.get(), smallPicture(), image)) << renderer.error();
    EXPECT_TRUE(pixelNear(image, 50, 50, red));
}

TEST_F(HeadlessRendering, GlxWarningIsDroppedAndOtherMessagesPass) {
    QUILLON_REQUIRE_RENDERING();
    ErrorRecorder recorder;
    {
        GlxWarningFilter filter;
        SoDebugError::postWarning("glxglue_isdirect", "Couldn't get current GLX context.");
        SoDebugError::postWarning("SoCube::GLRender", "something else");
    }
    ASSERT_EQ(recorder.messages().size(), 1u);
    EXPECT_TRUE(recorder.contains("something else"));

    // A context of its own makes the toolkit meet a new GL context.
    OffscreenRenderer renderer;
    RenderImage image;
    NodeRef<SoSeparator> scene = adoptNode(new SoSeparator);
    scene->addChild(frontCamera(4));
    ASSERT_TRUE(renderer.render(scene.get(), smallPicture(), image)) << renderer.error();
    EXPECT_FALSE(recorder.contains("GLX")) << recorder.messages().back();

    SoDebugError::postWarning("glxglue_isdirect", "Couldn't get current GLX context.");
    EXPECT_TRUE(recorder.contains("GLX"));
}

TEST_F(HeadlessRendering, GraphsThatContainThemselvesAreRefusedNotWalked) {
    OffscreenRenderer renderer;
    RenderImage image;
    std::string error;
    NodeRef<SoSeparator> loop = adoptNode(new SoSeparator);
    auto* inner = new SoSeparator;
    loop->addChild(inner);
    inner->addChild(new SoCube);
    inner->addChild(loop.get());
    EXPECT_FALSE(renderFramedScene(renderer, loop.get(), smallPicture(), image, error));
    EXPECT_EQ(error, "a Separator contains itself");
    loop->removeAllChildren();

    // Shared, not cyclic: drawn.
    NodeRef<SoSeparator> shared = adoptNode(new SoSeparator);
    auto* cube = flatCube(SbColor(1, 0, 0));
    shared->addChild(cube);
    shared->addChild(cube);
    EXPECT_EQ(sceneGraphProblem(shared.get()), "");
}

TEST_F(HeadlessRendering, CoordinatesTooLargeToDrawGiveAWarning) {
    for (float scale : {1e15f, 1e20f}) {
        NodeRef<SoSeparator> scene = adoptNode(new SoSeparator);
        auto* scaling = new SoScale;
        scaling->scaleFactor.setValue(scale, scale, scale);
        scene->addChild(scaling);
        scene->addChild(new SoCube);
        const std::string problem = sceneExtentProblem(scene.get(), SbViewportRegion(10, 10));
        EXPECT_EQ(problem.empty(), scale < 1e18f) << problem;
    }
    NodeRef<SoSeparator> nan = adoptNode(new SoSeparator);
    auto* translation = new SoTranslation;
    translation->translation.setValue(std::nanf(""), 0, 0);
    nan->addChild(translation);
    nan->addChild(new SoCube);
    EXPECT_NE(sceneExtentProblem(nan.get(), SbViewportRegion(10, 10)).find("not all finite"),
              std::string::npos);
}
