// quillon-render: draws a scene file into a PNG picture without a display.

#include "render/CommandLine.h"
#include "render/SceneRendering.h"

#include <Quillon/PoQuillon.h>

#include <cstdio>

int main(int argc, char** argv) {
    RenderRequest request;
    std::string error;
    if (!parseCommandLine(argc, argv, request, error)) {
        std::fprintf(stderr, "quillon-render: %s\n%s\n", error.c_str(), renderUsage);
        return 2;
    }
    PoQuillon::init();
    if (!renderSceneFileToPng(request, error)) {
        std::fprintf(stderr, "quillon-render: %s\n", error.c_str());
        return 1;
    }
    return 0;
}
