#pragma once
#include "OffscreenRenderer.h"

#include <string>

// What quillon-render was asked to do.
struct RenderRequest {
    std::string scenePath;
    std::string outputPath;
    RenderSettings settings;
};

extern const char* const renderUsage;

// Reads "SCENE.iv -o OUT.png [--size WxH] [--background R,G,B]".  Returns
// false with a one-line reason in error when the arguments are wrong.
bool parseCommandLine(int argc, const char* const* argv, RenderRequest& request,
                      std::string& error);
