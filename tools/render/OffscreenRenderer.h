#pragma once
#include "RenderImage.h"

#include <Inventor/SbColor.h>

#include <EGL/egl.h>

#include <cstdint>
#include <string>

class SoNode;

// What to draw: picture size in pixels, background colour and whether the
// picture keeps an alpha channel.
struct RenderSettings {
    int width = 800;
    int height = 600;
    SbColor background = SbColor(0.0f, 0.0f, 0.0f);
    bool withAlpha = false;
};

// Renders scene graphs without a display server, through an OpenGL context
// on Mesa's surfaceless EGL platform drawing into a pbuffer surface.
//
// open() sets the context up; every failure comes back as false plus a
// one-line message in error(), never as a crash.  The pbuffer is made anew
// whenever a render asks for another size.
class OffscreenRenderer {
public:
    OffscreenRenderer() = default;
    ~OffscreenRenderer();
    OffscreenRenderer(const OffscreenRenderer&) = delete;
    OffscreenRenderer& operator=(const OffscreenRenderer&) = delete;

    bool open();
    bool isOpen() const { return m_context != EGL_NO_CONTEXT; }
    const std::string& error() const { return m_error; }

    // Draws the scene exactly as given (it must hold its own camera) into
    // image, rows top-down.
    bool render(SoNode* scene, const RenderSettings& settings, RenderImage& image);

private:
    bool fail(const std::string& message);
    bool openDisplay();
    bool chooseConfig();
    bool createContext();
    bool useSurfaceOfSize(int width, int height);
    bool createSurface(int width, int height);
    void destroySurface();
    void close();
    void drawScene(SoNode* scene, const RenderSettings& settings);

    EGLDisplay m_display = EGL_NO_DISPLAY;
    EGLConfig m_config = nullptr;
    EGLContext m_context = EGL_NO_CONTEXT;
    EGLSurface m_surface = EGL_NO_SURFACE;
    int m_surfaceWidth = 0;
    int m_surfaceHeight = 0;
    uint32_t m_cacheContextId = 0;
    std::string m_error;
};
