#include "plugin/PluginContainer.h"

#include "object/Guard.h"
#include "plugin/Plugin.h"

#include <list>

namespace tesseralis {
ObservableEvent * PluginContainerEvent::GetCloned() const
{
    return new PluginContainerEvent(*this);
}

ObservableEvent * PluginContainerPluginEvent::GetCloned() const
{
    return new PluginContainerPluginEvent(*this);
}

bool PluginContainerPluginEvent::IsEqual(ObservableEvent const & event) const
{
    return PluginContainerEvent::IsEqual(event) && m_plugin == castEvent<PluginContainerPluginEvent>(event).m_plugin;
}

ObservableEvent * PluginContainerAdditionEvent::GetCloned() const
{
    return new PluginContainerAdditionEvent(*this);
}

ObservableEvent * PluginContainerRemovalEvent::GetCloned() const
{
    return new PluginContainerRemovalEvent(*this);
}

PluginContainer::PluginContainer(unsigned int attributes) : PluginContainer(GetTypeName(), attributes) {}

PluginContainer::PluginContainer(std::string const & name, unsigned int attributes)
    : PluginContainer(static_cast<PluginContainer *>(nullptr))
{
    constructPluginContainer(name, attributes);
}

PluginContainer::PluginContainer(PluginContainer *) : PropertyContainer(static_cast<PropertyContainer *>(nullptr)) {}

PluginContainer::~PluginContainer()
{
    destroyPluginContainer();
}

void PluginContainer::constructPluginContainer(std::string const & name, unsigned int attributes)
{
    constructPropertyContainer(name, attributes);
}

void PluginContainer::destroyPluginContainer()
{
    detail::runGuarded([this] { clearPlugins(); });
    destroyPropertyContainer();
}

std::string PluginContainer::GetTypeName()
{
    return "plugincontainer";
}

Object * PluginContainer::createObject(std::string const & name, unsigned int attributes)
{
    return new PluginContainer(name, attributes);
}

std::string PluginContainer::GetObjectTypeName() const
{
    return GetTypeName();
}

void PluginContainer::add(Plugin * plugin)
{
    MutexLocker locker(m_mutex);
    if (plugin == nullptr || HasPlugin(plugin)) {
        return;
    }

    beginModification(new PluginContainerAdditionEvent(plugin));
    try {
        // Somebody who hears of it may put the plug-in elsewhere, or here.
        while (plugin->m_container != nullptr && plugin->m_container != this) {
            plugin->m_container->remove(plugin);
        }
        if (m_plugins.insert(plugin).second) {
            plugin->m_container = this;
            initialize(plugin);
        }
    } catch (...) {
        // An observer of the plug-in that throws doesn't keep it from coming.
        HasPlugin(plugin) ? endModification() : abortModification();
        throw;
    }
    endModification();
}

void PluginContainer::remove(Plugin * plugin)
{
    MutexLocker locker(m_mutex);
    if (!HasPlugin(plugin)) {
        return;
    }

    // No observer can keep a plug-in that may be dying, but one may have removed it itself.
    beginModification(new PluginContainerRemovalEvent(plugin));
    detail::runGuarded([this] { endModification(); });
    if (!HasPlugin(plugin)) {
        return;
    }

    uninitialize(plugin);
    if (m_plugins.erase(plugin) > 0) {
        plugin->m_container = nullptr;
    }
}

bool PluginContainer::HasPlugin(Plugin * plugin) const
{
    MutexLocker locker(m_mutex);
    return m_plugins.contains(plugin);
}

void PluginContainer::clearPlugins()
{
    MutexLocker locker(m_mutex);
    std::list<Plugin *> removed;
    while (!m_plugins.empty()) {
        Plugin * const plugin = *m_plugins.begin();
        removed.remove(plugin); // if somebody who heard of its removal has put it back
        removed.push_back(plugin);
        remove(plugin);
    }

    // In a ring of plug-ins one of them owns this container, which is gone then.
    locker.unlock();
    for (Plugin * const plugin : removed) {
        delete plugin;
    }
}

void PluginContainer::initialize(Plugin * plugin)
{
    MutexLocker locker(m_mutex);
    if (plugin != nullptr) {
        plugin->initialize();
    }
}

void PluginContainer::uninitialize(Plugin * plugin)
{
    MutexLocker locker(m_mutex);
    if (plugin != nullptr) {
        plugin->uninitialize();
    }
}

void PluginContainer::store(ArchiveElement & element)
{
    MutexLocker locker(m_mutex);
    PropertyContainer::store(element);
}

void PluginContainer::retrieve(ArchiveElement & element)
{
    MutexLocker locker(m_mutex);
    PropertyContainer::retrieve(element);
}
} // namespace tesseralis
