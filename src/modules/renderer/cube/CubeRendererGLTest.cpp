#include "gpu/platform/OpenGL.h"
#include "plugin/Canvas.h"
#include "support/GLContext.h"
#include "support/Testing.h"
#include "support/ViewDoubles.h"

namespace {
/// Spoils what it can, leaves the canvas bound and fails.
class CarelessRenderer : public RendererPlugin
{
public:
    using RendererPlugin::RendererPlugin;

    void display(Canvas & canvas) override
    {
        canvas.bind();
        glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
        glMatrixMode(GL_PROJECTION);
        glScalef(0.1f, 0.1f, 0.1f);
        if (isFailing) {
            throw Exception("careless");
        }
    }

    bool isFailing = false;
};

template <class P>
P * addTo(Viewer & viewer, char const * module)
{
    auto * const plugin = new P(module, ObjectAttribute::All);
    plugin->SetFilename(module);
    plugin->GetProperty("Enabled") = true;
    viewer.add(static_cast<Plugin *>(plugin));
    return plugin;
}

using CubeRendererGL = GLTest;
} // namespace

TEST_F(CubeRendererGL, IsDrawnTheSameBehindOneThatLeavesItsStateBehind)
{
    Log log;
    ViewerDouble viewer(log);
    auto * const careless = addTo<CarelessRenderer>(viewer, "");
    auto * const cube = addTo<RendererPlugin>(viewer, CUBE_MODULE);
    addTo<CompositorPlugin>(viewer, DIRECT_MODULE);
    viewer.reshape(c_width, c_height);
    auto const state = currentState();
    viewer.display();
    EXPECT_EQ(currentState(), state);
    std::vector<unsigned char> const picture = viewer.readPixels();
    EXPECT_EQ(picture.at(3), 0) << "the background is clear";
    EXPECT_EQ(picture.at(4 * (c_height / 2 * c_width + c_width / 2) + 3), 255) << "the cube is in the middle";

    careless->isFailing = true;
    EXPECT_NE(logOf([&] { viewer.display(); }).find("careless"), std::string::npos);
    EXPECT_EQ(currentState(), state);
    careless->GetProperty("Enabled") = false;
    log.take();
    viewer.display();
    EXPECT_EQ(viewer.readPixels(), picture);

    log.take();
    cube->GetProperty("Size") = 2;
    EXPECT_EQ(log.take(), "repaint ");
    viewer.display();
    EXPECT_NE(viewer.readPixels(), picture);
}
