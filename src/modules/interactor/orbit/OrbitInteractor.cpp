#include "math/Vector.h"
#include "plugin/InteractorPlugin.h"
#include "plugin/PluginModule.h"
#include "value/Variant.h"
#include "view/Controller.h"

#include <algorithm>
#include <cmath>
#include <optional>

using namespace tesseralis;

namespace {
constexpr float c_steepest = 90.0f;
constexpr float c_farthest = 0.1f;
constexpr float c_nearest = 10.0f;

enum Button : unsigned int
{
    Rotate,
    Zoom
};

/// Turns and zooms by dragging. It changes properties of its own; what is to follow links its properties to these.
class OrbitInteractor : public Interactor, public PluginInstance<InteractorPlugin>
{
public:
    explicit OrbitInteractor(Plugin & plugin) : PluginInstance(plugin)
    {
        requireProperty("Azimuth", Variant(0.0f, -180.0f, 180.0f), "The turn about the upright axis, in degrees");
        requireProperty("Elevation", Variant(0.0f, -c_steepest, c_steepest),
                        "How far the scene is seen from above, in degrees");
        requireProperty("Zoom", Variant(1.0f, c_farthest, c_nearest), "How large the scene is");
    }

    void reshape(unsigned int, unsigned int height) override { m_height = static_cast<float>(std::max(height, 1u)); }

    bool button(Controller const & controller) override { return controller.GetActiveButton() <= Zoom; }

    bool cursor(Controller const & controller) override
    {
        if (controller.GetActiveCursor() != 0) {
            return false;
        }
        Vector const position = controller.GetActiveCursorPosition();
        Vector const way = (position - m_position.value_or(position)) / m_height;
        m_position = position;

        if (controller.GetButtonState(Rotate)) {
            rotate(way);
            return true;
        }
        if (controller.GetButtonState(Zoom)) {
            zoom(way.GetY());
            return true;
        }
        return false;
    }

    std::string GetButtonRole(unsigned int button) const override
    {
        return button == Rotate ? "Rotate" : button == Zoom ? "Zoom" : "";
    }

    std::string GetCursorRole(unsigned int cursor) const override { return cursor == 0 ? "Drag" : ""; }

private:
    void requireProperty(std::string const & name, Variant const & requirement, std::string const & description)
    {
        GetPlugin().GetProperty(name).require(requirement);
        GetPlugin().SetPropertyDescription(name, description);
    }

    /// The way is in heights of the surface, one of which is half a turn.
    void rotate(Vector const & way)
    {
        Variant & azimuth = GetPlugin().GetProperty("Azimuth");
        Variant & elevation = GetPlugin().GetProperty("Elevation");
        azimuth = toText(std::remainder(static_cast<float>(azimuth) + 180.0f * way.GetX(), 360.0f));
        elevation = toText(std::clamp(static_cast<float>(elevation) - 180.0f * way.GetY(), -c_steepest, c_steepest));
    }

    /// One height of the surface makes everything four times as large.
    void zoom(float way)
    {
        Variant & factor = GetPlugin().GetProperty("Zoom");
        factor = toText(std::clamp(static_cast<float>(factor) * std::exp2(2.0f * way), c_farthest, c_nearest));
    }

    /// A value has the digits that its text has, so that a document brings back what is seen now.
    static std::string toText(float value) { return Variant(value); }

    std::optional<Vector> m_position; // of the cursor, once it has moved
    float m_height = 1.0f;            // of the surface, in pixels
};
} // namespace

TESSERALIS_PLUGIN_MODULE(Interactor, "Orbit", "Turns and zooms by dragging.", "1.0.0-1 (20261123)", nullptr,
                         OrbitInteractor)
