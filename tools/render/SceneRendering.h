#pragma once
#include "CommandLine.h"
#include "OffscreenRenderer.h"
#include "RenderImage.h"

#include <string>

class SoNode;

// Renders a scene as a viewer would show it: a camera framing everything is
// added when the scene has none, and a headlight when it has no light.
bool renderFramedScene(OffscreenRenderer& renderer, SoNode* scene, const RenderSettings& settings,
                       RenderImage& image, std::string& error);

// The whole work of quillon-render: reads the scene file, renders it framed
// and writes the PNG.  The library must be initialised before.
bool renderSceneFileToPng(const RenderRequest& request, std::string& error);
