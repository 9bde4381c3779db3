#include "SceneRendering.h"

#include "PngWriter.h"
#include "SceneFraming.h"
#include "SceneGraphCheck.h"
#include "SceneLoader.h"

bool renderFramedScene(OffscreenRenderer& renderer, SoNode* scene, const RenderSettings& settings,
                       RenderImage& image, std::string& error, std::vector<std::string>* warnings) {
    error = sceneGraphProblem(scene);
    if (!error.empty())
        return false;
    const SbViewportRegion viewport(settings.width, settings.height);
    if (warnings && scene) {
        const std::string extent = sceneExtentProblem(scene, viewport);
        if (!extent.empty())
            warnings->push_back(extent);
    }
    NodeRef<SoSeparator> framed = frameScene(scene, viewport);
    if (renderer.render(framed.get(), settings, image))
        return true;
    error = renderer.error();
    return false;
}

namespace {

// A stage of the job left warnings that --strict makes fatal.
bool failsStrictly(const RenderRequest& request, const std::vector<std::string>& warnings,
                   std::string& error) {
    if (!request.strict || warnings.empty())
        return false;
    error = request.scenePath + ": failing on the warnings above (--strict)";
    return true;
}

} // namespace

bool renderSceneFileToPng(const RenderRequest& request, std::string& error,
                          std::vector<std::string>& warnings) {
    NodeRef<SoSeparator> scene = loadSceneFile(request.scenePath, error, &warnings);
    if (!scene || failsStrictly(request, warnings, error))
        return false;
    OffscreenRenderer renderer;
    RenderImage image;
    std::vector<std::string> drawing;
    if (!renderFramedScene(renderer, scene.get(), request.settings, image, error, &drawing))
        return false;
    if (image.holdsOnly(toRgb(request.settings.background), 1))
        drawing.push_back("the picture is blank: nothing but the background was drawn");
    for (const std::string& warning : drawing)
        warnings.push_back(request.scenePath + ": " + warning);
    return !failsStrictly(request, warnings, error) && writePng(request.outputPath, image, error);
}
