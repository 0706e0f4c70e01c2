#pragma once

#include "plugin/Container.h"

#include <set>
#include <string>

namespace tesseralis {
template <class T, unsigned int N>
class Image;
class Version;

/// The base of the events of plug-ins.
class TESSERALIS_API PluginEvent : public ObservableEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// A plug-in was to be initialised; whether it is, IsInitialized() tells.
class TESSERALIS_API PluginInitializeEvent : public PluginEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// A plug-in is about to be uninitialised; its instance is still there.
class TESSERALIS_API PluginUninitializeEvent : public PluginEvent
{
public:
    ObservableEvent * GetCloned() const override;
};

/// What a module adds to the system, as a named object with properties that a user sees. It can hold plug-ins itself.
///
/// A module is a shared object that exports the functions below, which PluginModule.h writes. Texts and data stay the
/// module's. A plug-in is bound to a module by its file name, and loads the module while it is initialised, which is
/// while it is in a container and not suspended. Its properties outlive that.
///
///     char const * GetPluginType()            the name of an object type such as "renderer", in any letter case
///     char const * GetPluginName()            for display; also the name that createPlugin() gives the object
///     char const * GetPluginDescription()     free text
///     char const * GetPluginVersion()         in the form of Version
///     char const * GetCoreVersion()           that of the library which the module was built against
///     unsigned char const * GetPluginIcon()   width, height, and that many pixels of four bytes
///     char const * GetPluginInformation(char const *, char const *)
///     void const * GetPluginData(char const *)
///     T * createPluginInstance(Plugin *)      the implementation, see BasicPlugin; it may throw
///
/// Each function may be missing and each result may be null: the answer is then empty. What a module throws while it
/// tells about itself makes the answer empty too. An operation may lead to its own plug-in being uninitialised or
/// deleted: the code that runs stays until it has returned. For the main thread.
class TESSERALIS_API Plugin : public Container
{
public:
    explicit Plugin(unsigned int attributes = 0);
    Plugin(std::string const & name, unsigned int attributes);
    ~Plugin() override;

    static std::string GetTypeName();
    /// Null: only plug-ins of one of the kinds are made through the registry.
    static Object * createObject(std::string const & name, unsigned int attributes);
    /// A new plug-in for a module, with the type and the name that the module tells and all attributes; null if the
    /// registry doesn't know the type or it is none of a plug-in. It is initialised when it is added to a container.
    static Plugin * createPlugin(std::string const & filename);

    /// The form under which this system's loader takes a module file that may have been named on another one:
    /// `plugin_a.dll` becomes `libplugin_a.so`. All that takes the name of a module file turns it into this form.
    static std::string GetPluginSystemFilename(std::string const & filename);
    /// The wildcard pattern of module files, without a directory.
    static std::string GetPluginFilter();
    /// The same for the modules whose names begin with a text.
    static std::string GetPluginFilter(std::string const & name);

    /// What a module tells about itself. Each call loads the module, asks it and lets it go again; the answer is empty
    /// where that fails.
    static std::string GetPluginType(std::string const & filename);
    static std::string GetPluginName(std::string const & filename);
    static std::string GetPluginDescription(std::string const & filename);
    static Version GetPluginVersion(std::string const & filename);
    /// The version of the library that the module was built against, which nothing here compares with that of this one.
    static Version GetCoreVersion(std::string const & filename);
    static Image<unsigned char, 4> GetPluginIcon(std::string const & filename);
    /// Questions of a free form, which the module understands or doesn't.
    static std::string GetPluginInformation(std::string const & filename, std::string const & topic,
                                            std::string const & detail);
    /// The pointer is into the module: it is good only as long as something else, such as an initialised plug-in, keeps
    /// the module loaded.
    static void const * GetPluginData(std::string const & filename, std::string const & key);
    /// Where the system found the module, with a separator at the end.
    static std::string GetPluginDirectory(std::string const & filename);

    /// All plug-ins that are bound to a module.
    static std::set<Plugin *> const & GetPluginInstances(std::string const & filename);

    /// The module file; empty until it is set.
    std::string GetFilename() const { return m_filename; }
    /// Binds the plug-in to another module, which is loaded at the next initialisation.
    void SetFilename(std::string const & filename);

    /// The path of an image that replaces the icon of the module; empty if there is none. Hosts load it.
    std::string const & GetCustomIcon() const { return m_customIcon; }
    bool HasCustomIcon() const { return !m_customIcon.empty(); }
    void SetCustomIcon(std::string const & path);

    /// The container that holds and owns this plug-in; null if there is none.
    PluginContainer * GetContainer() const { return m_container; }
    /// Moves the plug-in to another container. With null it is taken out and becomes the caller's.
    void SetContainer(PluginContainer * container);

    /// Unloads the module of an initialised plug-in that is in a container, and loads it again.
    virtual void suspend();
    virtual void resume();

    virtual void initialize() = 0;
    virtual void uninitialize() = 0;
    /// Whether there is an instance of the module's implementation.
    virtual bool IsInitialized() const = 0;

    /// What the plug-in's module tells about itself, as above.
    virtual void const * GetPluginData(std::string const & key) const = 0;
    virtual std::string GetPluginType() const = 0;
    virtual std::string GetPluginName() const = 0;
    virtual std::string GetPluginDescription() const = 0;
    virtual Version GetPluginVersion() const = 0;
    virtual Version GetCoreVersion() const = 0;
    virtual std::string GetPluginInformation(std::string const & topic, std::string const & detail) const = 0;
    virtual std::string GetPluginDirectory() const = 0;

    std::string GetObjectTypeName() const override;
    void store(ArchiveElement & element) override;
    /// Moves the plug-in into the container that the element names; one that doesn't exist leaves it without any.
    void retrieve(ArchiveElement & element) override;
    /// Not before the element of the container has been read.
    bool IsRetrievable(ArchiveElement & element) const override;

protected:
    using Container::initialize;
    using Container::resume;
    using Container::suspend;
    using Container::uninitialize;

    /// The plug-ins of exactly this file name.
    static std::set<Plugin *> & GetInstances(std::string const & filename);
    static void addInstance(std::string const & filename, Plugin * plugin);
    static void removeInstance(std::string const & filename, Plugin * plugin);

    /// For catch blocks: writes to the standard error stream that the module made no instance, and why.
    void reportInitializeException() const noexcept;
    /// For catch blocks: logs what came out of an operation of the module.
    void logOperationException(char const * operation) const noexcept;

    explicit Plugin(Plugin *);
    void constructPlugin(std::string const & name, unsigned int attributes);
    void destroyPlugin();
    /// The beginning of the end: the plug-in leaves the table of its module's plug-ins, and its container.
    void leave();

private:
    friend class PluginContainer; // which sets itself as the container

    PluginContainer * m_container = nullptr;
    std::string m_filename;
    std::string m_customIcon;
};
} // namespace tesseralis
