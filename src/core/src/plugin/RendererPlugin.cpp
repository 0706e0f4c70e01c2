#include "plugin/RendererPlugin.h"

namespace tesseralis {
RendererPlugin::RendererPlugin(unsigned int attributes) : RendererPlugin(GetTypeName(), attributes) {}

RendererPlugin::RendererPlugin(std::string const & name, unsigned int attributes)
    : RendererPlugin(static_cast<RendererPlugin *>(nullptr))
{
    constructRendererPlugin(name, attributes);
}

RendererPlugin::RendererPlugin(RendererPlugin *) : ViewPlugin(static_cast<ViewPlugin *>(nullptr)) {}

RendererPlugin::~RendererPlugin()
{
    destroyRendererPlugin();
}

void RendererPlugin::constructRendererPlugin(std::string const & name, unsigned int attributes)
{
    constructViewPlugin(name, attributes);
}

void RendererPlugin::destroyRendererPlugin()
{
    destroyViewPlugin();
}

std::string RendererPlugin::GetTypeName()
{
    return "renderer";
}

Object * RendererPlugin::createObject(std::string const & name, unsigned int attributes)
{
    return new RendererPlugin(name, attributes);
}

std::string RendererPlugin::GetObjectTypeName() const
{
    return GetTypeName();
}

void RendererPlugin::display(Canvas & canvas)
{
    forward("display", [&](Renderer & renderer) { renderer.display(canvas); });
}

void RendererPlugin::overlay(Canvas & canvas)
{
    forward("overlay", [&](Renderer & renderer) { renderer.overlay(canvas); });
}
} // namespace tesseralis
