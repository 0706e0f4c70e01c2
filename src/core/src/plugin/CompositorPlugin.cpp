#include "plugin/CompositorPlugin.h"

namespace tesseralis {
CompositorPlugin::CompositorPlugin(unsigned int attributes) : CompositorPlugin(GetTypeName(), attributes) {}

CompositorPlugin::CompositorPlugin(std::string const & name, unsigned int attributes)
    : CompositorPlugin(static_cast<CompositorPlugin *>(nullptr))
{
    constructCompositorPlugin(name, attributes);
}

CompositorPlugin::CompositorPlugin(CompositorPlugin *) : ViewPlugin(static_cast<ViewPlugin *>(nullptr)) {}

CompositorPlugin::~CompositorPlugin()
{
    destroyCompositorPlugin();
}

void CompositorPlugin::constructCompositorPlugin(std::string const & name, unsigned int attributes)
{
    constructViewPlugin(name, attributes);
}

void CompositorPlugin::destroyCompositorPlugin()
{
    destroyViewPlugin();
}

std::string CompositorPlugin::GetTypeName()
{
    return "compositor";
}

Object * CompositorPlugin::createObject(std::string const & name, unsigned int attributes)
{
    return new CompositorPlugin(name, attributes);
}

std::string CompositorPlugin::GetObjectTypeName() const
{
    return GetTypeName();
}

void CompositorPlugin::addDisplayable(Displayable * displayable)
{
    forward("addDisplayable", [&](Compositor & compositor) { compositor.addDisplayable(displayable); });
}

void CompositorPlugin::removeDisplayable(Displayable * displayable)
{
    forward("removeDisplayable", [&](Compositor & compositor) { compositor.removeDisplayable(displayable); });
}

bool CompositorPlugin::display(std::list<Displayable *> const & displayables,
                               std::map<Displayable *, unsigned int> const & updates)
{
    // One that fails is done: it must not be asked for ever.
    return forward(
        "display", [&](Compositor & compositor) { return compositor.display(displayables, updates); }, true);
}
} // namespace tesseralis
