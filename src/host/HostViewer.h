#pragma once

#include "Picture.h"

#include "view/Viewer.h"

#include <string>

namespace tesseralis::host {
class Surface;

/// The viewers of this program. All of them draw on its one surface; while there is none they draw nothing.
class HostViewer : public Viewer
{
public:
    HostViewer(std::string const & name, unsigned int attributes);
    ~HostViewer() override;

    static Object * createObject(std::string const & name, unsigned int attributes);
    /// The viewer in the registry that has this name, or with an empty name the only one that there is. Throws
    /// Exception if there is none.
    static HostViewer & find(std::string const & name);
    /// Draws on a surface from now on, or with null on none. It stays the caller's.
    static void SetSurface(Surface * surface);

    /// Has the plug-ins idle, and draws a frame if one is wanted since the last.
    void advance();
    /// The last frame.
    Picture const & GetPicture() const { return m_picture; }

    void repaint() override;
    void bindContext() override;
    void releaseContext() override;
    void swapBuffers() override;

private:
    Picture m_picture;
    bool m_isStale = true;
};
} // namespace tesseralis::host
