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
    if (request.action == RenderRequest::SHOW_HELP) {
        std::printf("%s\n\n%s\n", renderUsage, renderHelp);
        return 0;
    }
    if (request.action == RenderRequest::SHOW_VERSION) {
        std::printf("quillon-render %s\n", PoQuillon::getVersion());
        return 0;
    }
    PoQuillon::init();
    std::vector<std::string> warnings;
    const bool rendered = renderSceneFileToPng(request, error, warnings);
    for (const std::string& warning : warnings)
        std::fprintf(stderr, "quillon-render: warning: %s\n", warning.c_str());
    if (!rendered) {
        std::fprintf(stderr, "quillon-render: %s\n", error.c_str());
        return 1;
    }
    return 0;
}
