#pragma once

struct SDL_Window;

namespace tesseralis::host {
class Picture;

/// A surface for GL that no screen shows, and its context: a compatibility profile with eight bits of alpha and 24 of
/// depth. It needs no display. There is one at a time.
class Surface
{
public:
    /// Makes the context current. Throws Exception if the system has none to give.
    Surface(unsigned int width, unsigned int height);
    ~Surface();
    Surface(Surface const &) = delete;
    Surface & operator=(Surface const &) = delete;

    void makeCurrent();
    /// What is drawn on it. The context has to be current.
    Picture GetPicture() const;

private:
    void open();
    void close();

    unsigned int m_width;
    unsigned int m_height;
    SDL_Window * m_window = nullptr;
    void * m_context = nullptr;
};
} // namespace tesseralis::host
