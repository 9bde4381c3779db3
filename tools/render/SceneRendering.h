#pragma once
#include "CommandLine.h"
#include "OffscreenRenderer.h"
#include "RenderImage.h"

#include <string>
#include <vector>

class SoNode;

// Renders a scene as a viewer would show it: a camera framing everything is
// added when the scene has none, and a headlight when it has no light.  A
// scene that contains itself or nests too deep for the toolkit's actions is
// refused with an error; one whose coordinates cannot be drawn is rendered
// with a warning, added to warnings when given.
bool renderFramedScene(OffscreenRenderer& renderer, SoNode* scene, const RenderSettings& settings,
                       RenderImage& image, std::string& error,
                       std::vector<std::string>* warnings = nullptr);

// The whole work of quillon-render: reads the scene file, renders it framed
// and writes the PNG.  Warnings (problems the reader worked around, a
// scene that cannot be drawn, a blank picture) are added to warnings, each
// naming the scene file; with request.strict they fail the job before the
// picture is written.  The library must be initialised before.
bool renderSceneFileToPng(const RenderRequest& request, std::string& error,
                          std::vector<std::string>& warnings);
