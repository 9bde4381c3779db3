#pragma once
#include "OffscreenRenderer.h"

#include <string>

// What quillon-render was asked to do.
struct RenderRequest {
    enum Action { RENDER, SHOW_HELP, SHOW_VERSION };
    Action action = RENDER;
    std::string scenePath;
    std::string outputPath;
    RenderSettings settings;
    // Warnings (of the scene reader, or about the picture) fail the job.
    bool strict = false;
};

// One line: how to call the program.
extern const char* const renderUsage;
// The usage and what each option does, for --help.
extern const char* const renderHelp;

// Reads "SCENE.iv -o OUT.png [--size WxH] [--background R,G,B] [--strict]",
// or -h/--help, or --version.  Returns false with a one-line reason in
// error when the arguments are wrong, leaving request as it was.
bool parseCommandLine(int argc, const char* const* argv, RenderRequest& request,
                      std::string& error);
