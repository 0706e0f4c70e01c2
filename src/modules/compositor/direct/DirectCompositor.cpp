#include "plugin/Canvas.h"
#include "plugin/CompositorPlugin.h"
#include "plugin/Displayable.h"
#include "plugin/PluginModule.h"

#include <GL/gl.h>

using namespace tesseralis;

namespace {
/// The surface itself. What is drawn between bind() and release() begins with the viewer's attributes and with matrices
/// that are identities, whatever was drawn before.
class SurfaceCanvas final : public Canvas
{
public:
    SurfaceCanvas() = default;
    SurfaceCanvas(SurfaceCanvas const &) = delete;
    SurfaceCanvas & operator=(SurfaceCanvas const &) = delete;
    /// Releases what a displayable that failed has left bound.
    ~SurfaceCanvas()
    {
        while (m_depth > 0) {
            release();
        }
    }

    void bind() override
    {
        ++m_depth;
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        for (GLenum const matrix : {GL_PROJECTION, GL_MODELVIEW}) {
            glMatrixMode(matrix);
            glLoadIdentity();
        }
    }

    void release() override
    {
        --m_depth;
        glPopAttrib();
    }

private:
    int m_depth = 0;
};

/// Has all displayables draw straight to the surface, in order: first the scene, then what comes on top of it. It draws
/// everything in each frame, so it has no use for what has changed.
class DirectCompositor : public Compositor, public PluginInstance<CompositorPlugin>
{
public:
    using PluginInstance::PluginInstance;

    bool display(std::list<Displayable *> const & displayables, std::map<Displayable *, unsigned int> const &) override
    {
        for (Displayable * const displayable : displayables) {
            SurfaceCanvas canvas;
            displayable->display(canvas);
        }
        for (Displayable * const displayable : displayables) {
            SurfaceCanvas canvas;
            displayable->overlay(canvas);
        }
        return true;
    }
};
} // namespace

TESSERALIS_PLUGIN_MODULE(Compositor, "Direct", "Draws everything straight to the surface, in order.",
                         "1.0.0-1 (20261123)", nullptr, DirectCompositor)
