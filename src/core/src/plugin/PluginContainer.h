#pragma once

#include "object/PointerIterator.h"
#include "value/PropertyContainer.h"

#include <set>
#include <string>

namespace tesseralis {
class Plugin;

/// The base of the events of plug-in containers.
class TESSERALIS_API PluginContainerEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// What the events about one plug-in have in common.
class TESSERALIS_API PluginContainerPluginEvent : public PluginContainerEvent
{
public:
    explicit PluginContainerPluginEvent(Plugin * plugin) : m_plugin(plugin) {}

    Plugin const * GetPlugin() const { return m_plugin; }

    ObservableEvent * GetCloned() const override;
    bool IsEqual(ObservableEvent const & event) const override;

private:
    Plugin * m_plugin;
};

/// A plug-in has come and, if its module can be loaded, is initialised.
class TESSERALIS_API PluginContainerAdditionEvent : public PluginContainerPluginEvent
{
public:
    using PluginContainerPluginEvent::PluginContainerPluginEvent;
    ObservableEvent * GetCloned() const override;
};

/// A plug-in is about to go; it is still in the container and still initialised.
class TESSERALIS_API PluginContainerRemovalEvent : public PluginContainerPluginEvent
{
public:
    using PluginContainerPluginEvent::PluginContainerPluginEvent;
    ObservableEvent * GetCloned() const override;
};

/// An object that owns plug-ins. Adding one hands it over and initialises it, removing one uninitialises it and gives
/// it back; what a container still holds at its end is destroyed. A plug-in is in one container at most, and one that
/// is destroyed takes itself out. Containers that are plug-ins can form a ring; deleting any of them deletes what it
/// holds.
///
/// Subclasses override the four operations on plug-ins to tell kinds apart, and the four reactions below.
class TESSERALIS_API PluginContainer : public PropertyContainer
{
public:
    explicit PluginContainer(unsigned int attributes);
    PluginContainer(std::string const & name, unsigned int attributes);
    ~PluginContainer() override;

    static std::string GetTypeName();
    static Object * createObject(std::string const & name, unsigned int attributes);

    /// Takes a plug-in over, out of the container that has it. Nothing happens if it is here already.
    virtual void add(Plugin * plugin);
    /// Gives a plug-in back to the caller. Nothing happens if it isn't here. What an observer throws is logged.
    virtual void remove(Plugin * plugin);
    virtual bool HasPlugin(Plugin * plugin) const;
    /// Removes all plug-ins and deletes them.
    virtual void clearPlugins();

    std::string GetObjectTypeName() const override;
    void store(ArchiveElement & element) override;
    void retrieve(ArchiveElement & element) override;

protected:
    /// A plug-in has come, or is about to go, and is to be initialised or uninitialised.
    virtual void initialize(Plugin * plugin);
    virtual void uninitialize(Plugin * plugin);
    /// A plug-in is about to be suspended, or has been resumed.
    virtual void suspend(Plugin *) {}
    virtual void resume(Plugin *) {}

    explicit PluginContainer(PluginContainer *);
    void constructPluginContainer(std::string const & name, unsigned int attributes);
    void destroyPluginContainer();

private:
    friend class Plugin; // which announces its suspension
    friend class PluginContainerIterator;

    std::set<Plugin *> m_plugins;
};

/// Walks the plug-ins of a container in the order of their addresses. Takes no lock.
class TESSERALIS_API PluginContainerIterator : public detail::PointerIterator<std::set<Plugin *>>
{
public:
    explicit PluginContainerIterator(PluginContainer & container) : PointerIterator(container.m_plugins) {}
};
} // namespace tesseralis
