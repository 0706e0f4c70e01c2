#pragma once

#include "object/Exception.h"
#include "plugin/Plugin.h"

#include <string>

namespace tesseralis {
/// The second base of a module's implementation, beside its interface: the way back to the plug-in that it works for.
/// P is the class of the plug-in, such as RendererPlugin.
///
///     class Slices : public Renderer, public PluginInstance<RendererPlugin>
template <class P>
class PluginInstance
{
public:
    /// Throws Exception if the plug-in is of another class.
    explicit PluginInstance(Plugin & plugin) : m_plugin(dynamic_cast<P *>(&plugin))
    {
        if (m_plugin == nullptr) {
            throw Exception("Plugin instance type mismatch!");
        }
    }
    PluginInstance(PluginInstance const &) = delete;
    PluginInstance & operator=(PluginInstance const &) = delete;
    virtual ~PluginInstance() = default;

    P & GetPlugin() const { return *m_plugin; }
    /// Throws Exception while the plug-in is in no container.
    PluginContainer & GetContainer() const
    {
        PluginContainer * const container = m_plugin->GetContainer();
        if (container == nullptr) {
            throw Exception("The plugin is not in a container!");
        }
        return *container;
    }

    /// What the module answers to a question of a free form. A module with something to tell hides this by its own.
    static std::string GetPluginInformation(std::string const &, std::string const &) { return {}; }

private:
    P * m_plugin;
};
} // namespace tesseralis
