// How a viewer draws frames and hands input to its plug-ins.

#include "gpu/platform/OpenGL.h"
#include "math/Color.h"
#include "math/Vector.h"
#include "value/Variant.h"
#include "view/Controller.h"
#include "view/Viewer.h"
#include "view/detail/PluginKind.h"

#include <algorithm>
#include <utility>

namespace tesseralis {
namespace {
constexpr unsigned int c_allAttributes = 0xFFFFF;

/// One channel of a pixel that was blended with the alpha over a background.
unsigned char withoutBackground(unsigned char channel, unsigned char background, unsigned char alpha)
{
    int const drawn = (255 * channel - background * (255 - alpha)) / alpha;
    return static_cast<unsigned char>(std::clamp(drawn, 0, 255));
}

void removeBackground(unsigned char * pixel, Color const & background)
{
    unsigned char const alpha = pixel[3];
    for (int i = 0; i < 3; ++i) {
        pixel[i] = alpha == 0 ? 0 : withoutBackground(pixel[i], background.Get()[i], alpha);
    }
}
} // namespace

void Viewer::bindContext()
{
    glPushAttrib(c_allAttributes);
    glViewport(0, 0, static_cast<GLsizei>(m_width), static_cast<GLsizei>(m_height));
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
}

void Viewer::releaseContext()
{
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glPopMatrix();
    glPopAttrib();
}

Color Viewer::GetBackgroundColor()
{
    static std::string const s_name = "Background Color";
    Variant & value = GetProperty(s_name);
    value.require(Variant(Color(255, 255, 255, 0)));
    value.addObserver(&m_propertyObserver); // a new one, if the property was removed
    return value;
}

void Viewer::display()
{
    bindContext();
    Color const background = GetBackgroundColor();
    glClearColor(background.GetNormalizedRed(), background.GetNormalizedGreen(), background.GetNormalizedBlue(),
                 background.GetNormalizedAlpha());
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

    std::list<Displayable *> displayables = GetEnabledDisplayables();
    GetStack<CompositorPlugin>().forEach([&](CompositorPlugin & compositor) {
        if (compositor.IsEnabled()) {
            displayWith(compositor, displayables);
        }
    });
    swapBuffers();
    releaseContext();
}

std::list<Displayable *> Viewer::GetEnabledDisplayables() const
{
    std::list<Displayable *> displayables;
    forEachDisplayable([&](auto & plugin) {
        if (plugin.IsEnabled()) {
            displayables.push_back(&plugin);
        }
    });
    return displayables;
}

void Viewer::displayWith(CompositorPlugin & compositor, std::list<Displayable *> & displayables)
{
    while (true) {
        Updates updates = std::exchange(m_updates[&compositor], Updates());
        unsigned int const departures = m_departures;
        bool const done = compositor.display(displayables, updates);
        if (departures != m_departures) {
            auto const hasLeft = [this](Displayable * displayable) { return !HasDisplayable(displayable); };
            displayables.remove_if(hasLeft);
            std::erase_if(updates, [&](auto const & update) { return hasLeft(update.first); });
        }
        if (done || !GetStack<CompositorPlugin>().Has(&compositor)) {
            return;
        }
        for (auto const & [displayable, flags] : updates) {
            m_updates[&compositor][displayable] |= flags;
        }
    }
}

void Viewer::idle()
{
    auto const idlePlugin = [](auto & plugin) {
        if (plugin.IsEnabled()) {
            plugin.idle();
        }
    };
    GetStack<CompositorPlugin>().forEach(idlePlugin);
    forEachDisplayable(idlePlugin);
}

void Viewer::reshape(unsigned int width, unsigned int height)
{
    m_width = width;
    m_height = height;
    bindContext();
    auto const reshapePlugin = [&](auto & plugin) { plugin.reshape(m_width, m_height); };
    forEachDisplayable(reshapePlugin);
    GetStack<CompositorPlugin>().forEach(reshapePlugin);
    releaseContext();
}

template <class Translate, class Call>
void Viewer::dispatchInput(Translate const & translate, Call const & call)
{
    auto const isConsumedBy = [&](auto & plugin) {
        auto const found = plugin.IsEnabled() ? m_controllers.find(&plugin) : m_controllers.end();
        if (found == m_controllers.end()) {
            return false;
        }
        std::shared_ptr<Controller> const controller = found->second; // the plug-in may end itself
        bool consume = false;
        if (!translate(FindTranslator(&plugin), *controller, consume)) {
            return false;
        }
        bool const isHandled = call(plugin, *controller);
        return consume && isHandled;
    };
    GetStack<CompositorPlugin>().FindFromBack(isConsumedBy) ||
        GetStack<InteractorPlugin>().FindFromBack(isConsumedBy) ||
        GetStack<RendererPlugin>().FindFromBack(isConsumedBy);
}

void Viewer::cursor(std::string const & device, Vector const & position, float horizontalTilt, float verticalTilt)
{
    dispatchInput(
        [&](Translator const & translator, Controller & controller, bool & consume) {
            return translator.translateCursor(controller, consume, device, position, horizontalTilt, verticalTilt);
        },
        [](auto & plugin, Controller const & controller) { return plugin.cursor(controller); });
}

void Viewer::button(std::string const & device, float pressure)
{
    dispatchInput([&](Translator const & translator, Controller & controller,
                      bool & consume) { return translator.translateButton(controller, consume, device, pressure); },
                  [](auto & plugin, Controller const & controller) { return plugin.button(controller); });
}

void Viewer::button(std::string const & device, bool state)
{
    dispatchInput([&](Translator const & translator, Controller & controller,
                      bool & consume) { return translator.translateButton(controller, consume, device, state); },
                  [](auto & plugin, Controller const & controller) { return plugin.button(controller); });
}

void Viewer::SetTranslator(Plugin * plugin, Translator const & translator)
{
    if (plugin != nullptr) {
        m_translators[plugin] = translator;
        plugin->addObserver(&m_destructionObserver);
    }
}

Translator Viewer::GetTranslator(Plugin * plugin) const
{
    return FindTranslator(plugin);
}

Translator const & Viewer::FindTranslator(Plugin * plugin) const
{
    static Translator const s_default;
    auto const found = m_translators.find(plugin);
    return found != m_translators.end() ? found->second : s_default;
}

std::vector<unsigned char> Viewer::readPixels() const
{
    // The context that is bound is released again: nothing of the viewer changes.
    auto & viewer = const_cast<Viewer &>(*this);
    std::vector<unsigned char> pixels(std::size_t(4) * m_width * m_height);
    viewer.bindContext();
    Color const background = viewer.GetBackgroundColor();
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT); // which plug-ins may have left in any state
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glPixelStorei(GL_PACK_SKIP_ROWS, 0);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, static_cast<GLsizei>(m_width), static_cast<GLsizei>(m_height), GL_RGBA, GL_UNSIGNED_BYTE,
                 pixels.data());
    glPopClientAttrib();
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        removeBackground(&pixels[i], background);
    }
    viewer.releaseContext();
    return pixels;
}
} // namespace tesseralis
