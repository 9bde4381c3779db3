#include "SceneRendering.h"

#include "PngWriter.h"
#include "SceneFraming.h"
#include "SceneLoader.h"

bool renderFramedScene(OffscreenRenderer& renderer, SoNode* scene, const RenderSettings& settings,
                       RenderImage& image, std::string& error) {
    const SbViewportRegion viewport(settings.width, settings.height);
    NodeRef<SoSeparator> framed = frameScene(scene, viewport);
    if (renderer.render(framed.get(), settings, image))
        return true;
    error = renderer.error();
    return false;
}

bool renderSceneFileToPng(const RenderRequest& request, std::string& error) {
    NodeRef<SoSeparator> scene = loadSceneFile(request.scenePath, error);
    if (!scene)
        return false;
    OffscreenRenderer renderer;
    RenderImage image;
    return renderFramedScene(renderer, scene.get(), request.settings, image, error) &&
           writePng(request.outputPath, image, error);
}
