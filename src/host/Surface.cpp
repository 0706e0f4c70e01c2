#include "Surface.h"

#include "Picture.h"

#include "object/Exception.h"

#include <SDL.h>
#include <SDL_opengl.h>

namespace tesseralis::host {
namespace {
void require(bool success)
{
    if (!success) {
        throw Exception("There is no GL context to draw a frame with: %s.", SDL_GetError());
    }
}
} // namespace

Surface::Surface(unsigned int width, unsigned int height) : m_width(width), m_height(height)
{
    try {
        open();
    } catch (Exception const &) {
        close();
        throw;
    }
}

Surface::~Surface()
{
    close();
}

void Surface::open()
{
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    require(SDL_VideoInit("offscreen") == 0);
    require(SDL_GL_LoadLibrary(nullptr) == 0);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_COMPATIBILITY);
    SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 8);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
    m_window = SDL_CreateWindow("tesseralis", 0, 0, static_cast<int>(m_width), static_cast<int>(m_height),
                                SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN);
    require(m_window != nullptr);
    m_context = SDL_GL_CreateContext(m_window);
    require(m_context != nullptr);
}

/// Leaves the video system and the driver as they are: the end of the process takes them along. A driver that is
/// unloaded before can't be told by name where it has lost memory.
void Surface::close()
{
    if (m_context != nullptr) {
        SDL_GL_DeleteContext(m_context);
    }
    if (m_window != nullptr) {
        SDL_DestroyWindow(m_window);
    }
}

void Surface::makeCurrent()
{
    SDL_GL_MakeCurrent(m_window, m_context);
}

Picture Surface::GetPicture() const
{
    Picture picture(m_width, m_height);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    for (GLenum const layout : {GL_PACK_ROW_LENGTH, GL_PACK_SKIP_ROWS, GL_PACK_SKIP_PIXELS}) {
        glPixelStorei(layout, 0); // which plug-ins may have left in any state
    }
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, static_cast<GLsizei>(m_width), static_cast<GLsizei>(m_height), GL_RGB, GL_UNSIGNED_BYTE,
                 picture.GetPixels());
    glPopClientAttrib();
    return picture;
}
} // namespace tesseralis::host
