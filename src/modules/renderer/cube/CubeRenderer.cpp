#include "math/Color.h"
#include "math/Vector.h"
#include "object/ModifiedObserver.h"
#include "plugin/Canvas.h"
#include "plugin/PluginModule.h"
#include "plugin/RendererPlugin.h"
#include "value/Variant.h"

#include <algorithm>

#include <GL/gl.h>

using namespace tesseralis;

namespace {
struct Axis
{
    Vector direction;
    Color color;
    float strokes[6][2]; // of its letter, as ends of lines
};

constexpr float c_lineWidth = 2.0f;

Axis const c_axes[] = {
    {Vector(1, 0, 0), Color(220, 70, 60), {{-1, -1}, {1, 1}, {-1, 1}, {1, -1}, {0, 0}, {0, 0}}},
    {Vector(0, 1, 0), Color(70, 180, 80), {{-1, 1}, {0, 0}, {1, 1}, {0, 0}, {0, 0}, {0, -1}}},
    {Vector(0, 0, 1), Color(80, 120, 230), {{-1, 1}, {1, 1}, {1, 1}, {-1, -1}, {-1, -1}, {1, -1}}},
};

/// Draws a lit cube about the origin, with three axes and, on top of everything, their letters.
class CubeRenderer : public Renderer, public PluginInstance<RendererPlugin>
{
public:
    explicit CubeRenderer(Plugin & plugin) : PluginInstance(plugin)
    {
        requireProperty("Color", Variant(Color(235, 150, 40)), "The colour of the cube");
        requireProperty("Size", Variant(1.0f, 0.1f, 2.0f), "The length of the cube's edges");
        requireProperty("Azimuth", Variant(0.0f, -180.0f, 180.0f), "The turn about the upright axis, in degrees");
        requireProperty("Elevation", Variant(0.0f, -90.0f, 90.0f), "How far the cube is seen from above, in degrees");
        requireProperty("Zoom", Variant(1.0f, 0.1f, 10.0f), "How large the picture is");
        requireProperty("Axes", Variant(true), "Whether the axes are drawn");
        m_observer.connect(this, &CubeRenderer::changed);
        GetPlugin().addObserver(&m_observer);
    }

    void reshape(unsigned int width, unsigned int height) override
    {
        m_aspect = static_cast<float>(std::max(width, 1u)) / static_cast<float>(std::max(height, 1u));
    }

    void display(Canvas & canvas) override
    {
        canvas.bind();
        glEnable(GL_DEPTH_TEST);
        placeLight();
        placeCamera();
        glLineWidth(c_lineWidth);
        if (IsShowingAxes()) {
            drawAxes();
        }
        glEnable(GL_LIGHTING);
        drawCube();
        canvas.release();
    }

    void overlay(Canvas & canvas) override
    {
        if (!IsShowingAxes()) {
            return;
        }
        canvas.bind();
        placeCamera();
        glLineWidth(c_lineWidth);
        for (Axis const & axis : c_axes) {
            drawLetter(axis);
        }
        canvas.release();
    }

private:
    void requireProperty(std::string const & name, Variant const & requirement, std::string const & description)
    {
        GetPlugin().GetProperty(name).require(requirement);
        GetPlugin().SetPropertyDescription(name, description);
    }

    void changed(RendererPlugin const &, PropertyContainerChangeEvent const &) { GetPlugin().update(); }

    float GetNumber(char const * name) const { return static_cast<float>(GetPlugin().GetProperty(name)); }
    bool IsShowingAxes() const { return static_cast<bool>(GetPlugin().GetProperty("Axes")); }

    /// Above the viewer's left shoulder, since no camera has been placed yet.
    static void placeLight()
    {
        GLfloat const position[] = {-0.3f, 0.6f, 1.0f, 0.0f};
        glLightfv(GL_LIGHT0, GL_POSITION, position);
        glEnable(GL_LIGHT0);
        glEnable(GL_NORMALIZE);
        glEnable(GL_COLOR_MATERIAL);
    }

    void placeCamera() const
    {
        constexpr float c_near = 3.0f;
        constexpr float c_far = 9.0f;
        // The scene fits into the shorter side of the surface.
        float const half = 0.8f / GetNumber("Zoom") / std::min(m_aspect, 1.0f);
        glMatrixMode(GL_PROJECTION);
        glFrustum(-half * m_aspect, half * m_aspect, -half, half, c_near, c_far);
        glMatrixMode(GL_MODELVIEW);
        glTranslatef(0.0f, 0.0f, -(c_near + c_far) / 2.0f);
        glRotatef(GetNumber("Elevation"), 1.0f, 0.0f, 0.0f);
        glRotatef(GetNumber("Azimuth"), 0.0f, 1.0f, 0.0f);
    }

    float GetAxisLength() const { return 0.5f * GetNumber("Size") + 0.4f; }

    void drawAxes() const
    {
        glBegin(GL_LINES);
        for (Axis const & axis : c_axes) {
            glColor3ubv(axis.color.Get());
            glVertex3f(0.0f, 0.0f, 0.0f);
            glVertex3fv((axis.direction * GetAxisLength()).Get());
        }
        glEnd();
    }

    void drawCube() const
    {
        Color const color = GetPlugin().GetProperty("Color");
        float const half = 0.5f * GetNumber("Size");
        glColor3ubv(color.Get());
        glScalef(half, half, half);
        glBegin(GL_QUADS);
        for (unsigned int axis = 0; axis < 3; ++axis) {
            drawFace(axis, 1.0f);
            drawFace(axis, -1.0f);
        }
        glEnd();
    }

    static void drawFace(unsigned int axis, float side)
    {
        constexpr float c_corners[4][2] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
        Vector normal(0, 0, 0);
        normal[axis] = side;
        glNormal3fv(normal.Get());
        for (auto const & corner : c_corners) {
            Vector vertex = normal;
            vertex[(axis + 1) % 3] = corner[0];
            vertex[(axis + 2) % 3] = corner[1];
            glVertex3fv(vertex.Get());
        }
    }

    /// Behind the end of its axis, and upright for whoever looks.
    void drawLetter(Axis const & axis) const
    {
        constexpr float c_size = 0.06f;
        Vector const place = axis.direction * (GetAxisLength() + 3.0f * c_size);
        glPushMatrix();
        glTranslatef(place.GetX(), place.GetY(), place.GetZ());
        glRotatef(-GetNumber("Azimuth"), 0.0f, 1.0f, 0.0f);
        glRotatef(-GetNumber("Elevation"), 1.0f, 0.0f, 0.0f);
        glScalef(c_size, c_size, c_size);
        glColor3ubv(axis.color.Get());
        glBegin(GL_LINES);
        for (auto const & end : axis.strokes) {
            glVertex2fv(end);
        }
        glEnd();
        glPopMatrix();
    }

    ModifiedObserver m_observer;
    float m_aspect = 1.0f; // width of the surface by its height
};
} // namespace

TESSERALIS_PLUGIN_MODULE(Renderer, "Cube", "Draws a lit cube with axes.", "1.0.0-1 (20261123)", nullptr, CubeRenderer)
