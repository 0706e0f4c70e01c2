#include "gpu/platform/OpenGL.h"
#include "math/Color.h"
#include "support/GLContext.h"
#include "support/ViewDoubles.h"

#include <array>

namespace {
class ViewerGL : public GLTest
{
protected:
    ViewerGL() { viewer.reshape(c_width, c_height); }

    Color pixel(int x, int y) const { return Color(&viewer.readPixels()[std::size_t(4) * (x + y * c_width)]); }
    /// Has a compositor draw with each frame.
    void SetDrawing(std::function<void()> const & draw)
    {
        auto * const compositor = new CompositorDouble("compositor", log);
        compositor->reaction = [draw] { return draw(), true; };
        viewer.add(compositor);
    }

    Log log;
    ViewerDouble viewer{log};
};
} // namespace

TEST_F(ViewerGL, ReadsStraightAlphaFromTheBottomUp)
{
    // The background, the surface as it was blended over that, and what was drawn.
    std::array<Color, 3> const cases[] = {
        {Color(255, 255, 255, 0), Color(200, 100, 0, 255), Color(200, 100, 0, 255)},
        {Color(255, 255, 255, 0), Color(255, 200, 127, 128), Color(255, 145, 0, 128)}, // 73 * 255 / 128
        {Color(0, 0, 0, 0), Color(64, 128, 200, 128), Color(127, 255, 255, 128)},      // 64 * 255 / 128, and above 255
        {Color(100, 100, 100, 0), Color(10, 20, 30, 1), Color(0, 0, 0, 1)},
        {Color(9, 9, 9, 0), Color(200, 100, 50, 0), Color(0, 0, 0, 0)},
        {Color(9, 8, 7, 255), Color(9, 8, 7, 255), Color(9, 8, 7, 255)},
    };
    Color surface;
    SetDrawing([&] {
        glEnable(GL_SCISSOR_TEST);
        glScissor(3, 1, 2, 1);
        glClearColor(surface.GetNormalizedRed(), surface.GetNormalizedGreen(), surface.GetNormalizedBlue(),
                     surface.GetNormalizedAlpha());
        glClear(GL_COLOR_BUFFER_BIT);
    });
    for (auto const & [background, blended, straight] : cases) {
        surface = blended;
        viewer.GetProperty("Background Color") = background;
        viewer.display();
        EXPECT_EQ(pixel(3, 1), straight) << Variant(surface);
        EXPECT_EQ(pixel(4, 1), straight);
        for (Color const & outside : {pixel(3, 2), pixel(5, 1)}) {
            EXPECT_EQ(outside, background.GetAlpha() == 255 ? background : Color(0, 0, 0, 0));
        }
    }
    viewer.removeProperty("Background Color");
    viewer.display();
    EXPECT_EQ(viewer.GetProperty("Background Color"), Variant(Color(255, 255, 255, 0)));
    log.take();
    viewer.GetProperty("Background Color") = Color(1, 2, 3, 4);
    EXPECT_EQ(log.take(), "repaint ") << "also of a property that was made anew";
}

TEST_F(ViewerGL, LeavesTheStateAsItWas)
{
    GLint inside[4];
    SetDrawing([&] {
        glGetIntegerv(GL_VIEWPORT, inside);
        viewer.bindContext(); // they nest
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glScalef(2, 2, 2);
        viewer.releaseContext();
        glTranslatef(1, 2, 3);
        glMatrixMode(GL_TEXTURE);
        glViewport(1, 2, 3, 4);
        glEnable(GL_BLEND);
        glEnable(GL_DEPTH_TEST);
        glPixelStorei(GL_PACK_ROW_LENGTH, 1000);
    });
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, 8, 0, 8, -8, 8);
    glViewport(7, 6, 5, 4);
    glClearColor(1, 0, 0, 1);
    glPixelStorei(GL_PACK_ROW_LENGTH, 1000);
    auto const before = currentState();
    viewer.display();
    EXPECT_EQ(std::vector<GLint>(inside, inside + 4), (std::vector<GLint>{0, 0, c_width, c_height}));
    EXPECT_EQ(currentState(), before);
    EXPECT_EQ(pixel(0, 0), Color(0, 0, 0, 0));
    viewer.reshape(c_width, c_height);
    viewer.add(new RendererDouble("renderer", log));
    viewer.clearPlugins();
    EXPECT_EQ(currentState(), before);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
