#include "support/GLContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>

#include <dlfcn.h>

#include <cstdlib>

namespace tesseralis::test {
namespace {
EGLDisplay openDisplay()
{
    // The driver stays loaded, so that the leak detector knows what belongs to it.
    for (char const * name : {"libEGL_mesa.so.0", "/usr/lib/x86_64-linux-gnu/dri/swrast_dri.so"}) {
        dlopen(name, RTLD_NOW | RTLD_NODELETE);
    }
    auto const getDisplay =
        reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
    EGLDisplay const display = getDisplay == nullptr
                                   ? EGL_NO_DISPLAY
                                   : getDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    return eglInitialize(display, nullptr, nullptr) ? display : EGL_NO_DISPLAY;
}
} // namespace

GLContext::GLContext(int width, int height) : m_missing(make(width, height)) {}

GLContext::~GLContext()
{
    if (m_display == EGL_NO_DISPLAY) {
        return;
    }
    eglMakeCurrent(m_display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (m_surface != EGL_NO_SURFACE) {
        eglDestroySurface(m_display, m_surface);
    }
    if (m_context != EGL_NO_CONTEXT) {
        eglDestroyContext(m_display, m_context);
    }
}

std::string GLContext::make(int width, int height)
{
    static EGLDisplay const s_display = openDisplay(); // stays initialised, which makes contexts fast
    m_display = s_display;
    if (m_display == EGL_NO_DISPLAY) {
        return "no EGL display without a surface (Mesa's EGL and its software driver)";
    }

    EGLint const configuration[] = {EGL_SURFACE_TYPE,
                                    EGL_PBUFFER_BIT,
                                    EGL_RENDERABLE_TYPE,
                                    EGL_OPENGL_BIT,
                                    EGL_RED_SIZE,
                                    8,
                                    EGL_GREEN_SIZE,
                                    8,
                                    EGL_BLUE_SIZE,
                                    8,
                                    EGL_ALPHA_SIZE,
                                    8,
                                    EGL_DEPTH_SIZE,
                                    24,
                                    EGL_STENCIL_SIZE,
                                    8,
                                    EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglBindAPI(EGL_OPENGL_API) || !eglChooseConfig(m_display, configuration, &config, 1, &count) || count == 0) {
        return "no OpenGL surface with alpha, depth and stencil in EGL";
    }

    EGLint const size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    m_surface = eglCreatePbufferSurface(m_display, config, size);
    m_context = eglCreateContext(m_display, config, EGL_NO_CONTEXT, nullptr);
    bool const isCurrent = eglMakeCurrent(m_display, m_surface, m_surface, m_context) != EGL_FALSE;
    return isCurrent ? "" : "no OpenGL context in EGL";
}

std::map<unsigned int, std::vector<int>> currentState()
{
    std::map<unsigned int, std::vector<int>> state;
    for (GLenum const name :
         {GL_ATTRIB_STACK_DEPTH, GL_CLIENT_ATTRIB_STACK_DEPTH, GL_PROJECTION_STACK_DEPTH, GL_MODELVIEW_STACK_DEPTH,
          GL_MATRIX_MODE, GL_VIEWPORT, GL_DEPTH_TEST, GL_BLEND, GL_LIGHTING, GL_COLOR_CLEAR_VALUE, GL_COLOR_WRITEMASK,
          GL_PACK_ROW_LENGTH, GL_PROJECTION_MATRIX, GL_MODELVIEW_MATRIX}) {
        state[name].resize(16);
        glGetIntegerv(name, state[name].data());
    }
    return state;
}

void GLTest::SetUp()
{
    if (m_context.GetMissing().empty()) {
        return;
    }
    if (std::getenv("TESSERALIS_REQUIRE_GL") != nullptr) {
        FAIL() << "There is " << m_context.GetMissing() << ".";
    }
    GTEST_SKIP() << "There is " << m_context.GetMissing() << ".";
}
} // namespace tesseralis::test
