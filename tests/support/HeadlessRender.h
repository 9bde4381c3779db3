#pragma once
#include "render/OffscreenRenderer.h"
#include "render/RenderImage.h"

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>
#include <Inventor/nodes/SoOrthographicCamera.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

class SoNode;

// Headless rendering for tests.  All renders of a process share one
// offscreen context.  Call PoQuillon::init() first.

// Whether this machine can render; otherwise reason says why.
bool canRenderHeadless(std::string& reason);

// Skips the current test when the machine cannot render at all.
#define QUILLON_REQUIRE_RENDERING()                                                                \
    do {                                                                                           \
        std::string whyNot;                                                                        \
        if (!canRenderHeadless(whyNot))                                                            \
            GTEST_SKIP() << "headless rendering unavailable: " << whyNot;                          \
    } while (0)

// Picture settings for tests: small, so that renders stay quick.
RenderSettings smallPicture(int width = 100, int height = 100,
                            const SbColor& background = SbColor(0.0f, 0.0f, 0.0f));

// An orthographic camera at position looking down -z and seeing height
// units.
SoOrthographicCamera* orthographicCamera(const SbVec3f& position, float height);

// Renders the scene as a viewer shows it (camera and headlight added when
// missing).  A failure is reported to the running test and gives an empty
// image.
RenderImage renderHeadless(SoNode* scene, const RenderSettings& settings = smallPicture());

bool operator==(const Rgb& a, const Rgb& b);
std::ostream& operator<<(std::ostream& out, const Rgb& color);

// For EXPECT_TRUE: the pixel at (x, y), top-left origin, is near expected.
::testing::AssertionResult pixelNear(const RenderImage& image, int x, int y, const Rgb& expected,
                                     int tolerance = 8);

int countPixelsNear(const RenderImage& image, const Rgb& color, int tolerance = 8);

// The smallest rectangle of columns x0..x1 and rows y0..y1 (top-left
// origin, inclusive) holding every pixel that differs from the background;
// empty when there is none.
struct PixelRect {
    int x0 = 0, y0 = 0, x1 = -1, y1 = -1;
    bool empty() const { return x1 < x0 || y1 < y0; }
};
PixelRect drawnExtent(const RenderImage& image, const Rgb& background, int tolerance = 8);

// For EXPECT_TRUE: nothing but background was drawn.
::testing::AssertionResult isAllBackground(const RenderImage& image, const Rgb& background,
                                           int tolerance = 8);
