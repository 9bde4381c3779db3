#include "support/HeadlessRender.h"

#include "render/SceneRendering.h"

#include <Inventor/nodes/SoOrthographicCamera.h>

#include <algorithm>
#include <cstdlib>

namespace {

// Kept for the whole process: the toolkit may still hold GL resources of
// this context when static objects are destroyed.
OffscreenRenderer& sharedRenderer() {
    static OffscreenRenderer* renderer = new OffscreenRenderer;
    return *renderer;
}

} // namespace

bool canRenderHeadless(std::string& reason) {
    OffscreenRenderer& renderer = sharedRenderer();
    if (renderer.open())
        return true;
    reason = renderer.error();
    return false;
}

RenderSettings smallPicture(int width, int height, const SbColor& background) {
    RenderSettings settings;
    settings.width = width;
    settings.height = height;
    settings.background = background;
    return settings;
}

RenderImage renderHeadless(SoNode* scene, const RenderSettings& settings) {
    RenderImage image;
    std::string error;
    if (!renderFramedScene(sharedRenderer(), scene, settings, image, error))
        ADD_FAILURE() << "headless render failed: " << error;
    return image;
}

bool operator==(const Rgb& a, const Rgb& b) {
    return a.r == b.r && a.g == b.g && a.b == b.b;
}

std::ostream& operator<<(std::ostream& out, const Rgb& color) {
    return out << "(" << int(color.r) << ", " << int(color.g) << ", " << int(color.b) << ")";
}

::testing::AssertionResult pixelNear(const RenderImage& image, int x, int y, const Rgb& expected,
                                     int tolerance) {
    if (x < 0 || y < 0 || x >= image.width() || y >= image.height())
        return ::testing::AssertionFailure() << "pixel (" << x << ", " << y << ") lies outside the "
                                             << image.width() << "x" << image.height() << " image";
    const Rgb actual = image.pixel(x, y);
    if (isNear(actual, expected, tolerance))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "pixel (" << x << ", " << y << ") is " << actual
                                         << ", expected " << expected << " within " << tolerance;
}

int countPixelsNear(const RenderImage& image, const Rgb& color, int tolerance) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += isNear(image.pixel(x, y), color, tolerance) ? 1 : 0;
    return count;
}

PixelRect drawnExtent(const RenderImage& image, const Rgb& background, int tolerance) {
    PixelRect rect{image.width(), image.height(), -1, -1};
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (!isNear(image.pixel(x, y), background, tolerance)) {
                rect.x0 = std::min(rect.x0, x);
                rect.y0 = std::min(rect.y0, y);
                rect.x1 = std::max(rect.x1, x);
                rect.y1 = std::max(rect.y1, y);
            }
    return rect;
}

::testing::AssertionResult isAllBackground(const RenderImage& image, const Rgb& background,
                                           int tolerance) {
    if (image.empty())
        return ::testing::AssertionFailure() << "the image is empty";
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (!isNear(image.pixel(x, y), background, tolerance))
                return ::testing::AssertionFailure()
                       << "pixel (" << x << ", " << y << ") is " << image.pixel(x, y)
                       << ", not the background " << background;
    return ::testing::AssertionSuccess();
}

SoOrthographicCamera* orthographicCamera(const SbVec3f& position, float height) {
    auto* camera = new SoOrthographicCamera;
    camera->position = position;
    camera->height = height;
    return camera;
}
