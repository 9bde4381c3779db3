#include "OffscreenRenderer.h"

#include "GlxWarningFilter.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/elements/SoGLCacheContextElement.h>
#include <Inventor/misc/SoContextHandler.h>
#include <Inventor/nodes/SoNode.h>

#include <EGL/eglext.h>
#include <GL/gl.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <utility>

namespace {

std::string eglErrorText() {
    char text[32];
    std::snprintf(text, sizeof text, "EGL error 0x%04x", static_cast<unsigned>(eglGetError()));
    return text;
}

bool hasClientExtension(const std::string& name) {
    const char* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    std::istringstream words(extensions ? extensions : "");
    const std::istream_iterator<std::string> end;
    return std::find(std::istream_iterator<std::string>(words), end, name) != end;
}

// Errors the scene's own drawing left behind must not be taken for a
// failure of the read-back that follows.
void discardGlErrors() {
    for (int i = 0; i < 32 && glGetError() != GL_NO_ERROR; ++i) {
    }
}

} // namespace

OffscreenRenderer::~OffscreenRenderer() {
    close();
}

bool OffscreenRenderer::fail(const std::string& message) {
    m_error = message;
    return false;
}

bool OffscreenRenderer::open() {
    if (isOpen())
        return true;
    m_error.clear();
    return openDisplay() && chooseConfig() && createContext();
}

bool OffscreenRenderer::openDisplay() {
    if (!hasClientExtension("EGL_MESA_platform_surfaceless"))
        return fail("EGL offers no surfaceless platform (EGL_MESA_platform_surfaceless); "
                    "is Mesa's EGL installed?");
    auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (!getPlatformDisplay)
        return fail("EGL has no eglGetPlatformDisplayEXT");
    EGLDisplay display =
        getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY)
        return fail("cannot open the surfaceless EGL display (" + eglErrorText() + ")");
    EGLint major = 0;
    EGLint minor = 0;
    if (!eglInitialize(display, &major, &minor))
        return fail("cannot initialise the surfaceless EGL display (" + eglErrorText() + ")");
    m_display = display;
    return true;
}

bool OffscreenRenderer::chooseConfig() {
    // clang-format off
    const EGLint attributes[] = {
        EGL_SURFACE_TYPE, EGL_PBUFFER_BIT,
        EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
        EGL_RED_SIZE, 8, EGL_GREEN_SIZE, 8, EGL_BLUE_SIZE, 8, EGL_ALPHA_SIZE, 8,
        EGL_DEPTH_SIZE, 24,
        EGL_NONE};
    // clang-format on
    EGLint count = 0;
    if (!eglChooseConfig(m_display, attributes, &m_config, 1, &count) || count < 1)
        return fail("no EGL configuration offers RGBA8 with a 24-bit depth buffer, pbuffers "
                    "and desktop OpenGL");
    return true;
}

bool OffscreenRenderer::createContext() {
    if (!eglBindAPI(EGL_OPENGL_API))
        return fail("EGL cannot bind desktop OpenGL (" + eglErrorText() + ")");
    EGLContext context = eglCreateContext(m_display, m_config, EGL_NO_CONTEXT, nullptr);
    if (context == EGL_NO_CONTEXT)
        return fail("cannot create an OpenGL context (" + eglErrorText() + ")");
    m_context = context;
    m_cacheContextId = SoGLCacheContextElement::getUniqueCacheContext();
    return true;
}

bool OffscreenRenderer::useSurfaceOfSize(int width, int height) {
    const bool fits =
        m_surface != EGL_NO_SURFACE && width == m_surfaceWidth && height == m_surfaceHeight;
    if (!fits && !createSurface(width, height))
        return false;
    return eglMakeCurrent(m_display, m_surface, m_surface, m_context) ||
           fail("cannot make the OpenGL context current (" + eglErrorText() + ")");
}

bool OffscreenRenderer::createSurface(int width, int height) {
    destroySurface();
    const EGLint attributes[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    m_surface = eglCreatePbufferSurface(m_display, m_config, attributes);
    if (m_surface == EGL_NO_SURFACE)
        return fail("cannot create a " + std::to_string(width) + "x" + std::to_string(height) +
                    " pbuffer (" + eglErrorText() + ")");
    m_surfaceWidth = width;
    m_surfaceHeight = height;
    return true;
}

void OffscreenRenderer::destroySurface() {
    if (m_surface == EGL_NO_SURFACE)
        return;
    eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroySurface(m_display, m_surface);
    m_surface = EGL_NO_SURFACE;
}

// The display stays initialised: EGL hands every caller the same display
// object, and terminating it would pull it from under other renderers.
void OffscreenRenderer::close() {
    if (!isOpen())
        return;
    if (m_surface != EGL_NO_SURFACE && eglMakeCurrent(m_display, m_surface, m_surface, m_context))
        SoContextHandler::destructingContext(m_cacheContextId);
    destroySurface();
    eglDestroyContext(m_display, m_context);
    m_context = EGL_NO_CONTEXT;
}

bool OffscreenRenderer::render(SoNode* scene, const RenderSettings& settings, RenderImage& image) {
    if (!scene)
        return fail("there is no scene to render");
    if (settings.width < 1 || settings.height < 1)
        return fail("the picture size must be at least 1x1, not " + std::to_string(settings.width) +
                    "x" + std::to_string(settings.height));
    if (!open() || !useSurfaceOfSize(settings.width, settings.height))
        return false;
    drawScene(scene, settings);
    discardGlErrors();

    RenderImage picture(settings.width, settings.height, settings.withAlpha ? 4 : 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, settings.width, settings.height, settings.withAlpha ? GL_RGBA : GL_RGB,
                 GL_UNSIGNED_BYTE, picture.data());
    const GLenum glError = glGetError();
    if (glError != GL_NO_ERROR)
        return fail("reading the picture back failed (GL error " + std::to_string(glError) + ")");
    picture.flipRows();
    image = std::move(picture);
    return true;
}

// With an alpha channel the background is cleared fully transparent, so the
// picture can be laid over another.
void OffscreenRenderer::drawScene(SoNode* scene, const RenderSettings& settings) {
    const SbColor& background = settings.background;
    glViewport(0, 0, settings.width, settings.height);
    glClearColor(background[0], background[1], background[2], settings.withAlpha ? 0.0f : 1.0f);
    glClearDepth(1.0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);

    GlxWarningFilter quietGlx;
    SoGLRenderAction action(SbViewportRegion(settings.width, settings.height));
    action.setCacheContext(m_cacheContextId);
    action.apply(scene);
    glFinish();
}
