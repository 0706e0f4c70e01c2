#include "plugin/Plugin.h"

#include "object/Exception.h"
#include "object/Guard.h"
#include "object/Logger.h"
#include "object/Path.h"
#include "object/Tesseralis.h"
#include "object/Text.h"
#include "object/Version.h"
#include "plugin/ModuleGuard.h"
#include "value/Archive.h"

#include <iostream>
#include <map>

namespace tesseralis {
namespace {
constexpr char c_modulePrefix[] = "lib";
constexpr char c_moduleExtension[] = ".so";

Library loadModule(std::string const & filename)
{
    return ModuleGuard::load(Plugin::GetPluginSystemFilename(filename));
}

/// Calls an entry point that gives a pointer. Null if there is none of the name or it throws.
template <class Result, class... Arguments>
Result const * ask(Library const & module, char const * entryPoint, Arguments... arguments)
{
    using Function = Result const * (*)(Arguments...);
    auto const function = reinterpret_cast<Function>(module.GetProcedure(entryPoint));
    try {
        return function != nullptr ? function(arguments...) : nullptr;
    } catch (...) {
        return nullptr;
    }
}

/// The answer of a module that is loaded for this question alone.
template <class... Arguments>
std::string askForText(std::string const & filename, char const * entryPoint, Arguments... arguments)
{
    Library const module = loadModule(filename);
    char const * const text = ask<char>(module, entryPoint, arguments...);
    return text != nullptr ? std::string(text) : std::string();
}

std::string lowered(std::string text)
{
    for (char & character : text) {
        if (character >= 'A' && character <= 'Z') {
            character = static_cast<char>(character - 'A' + 'a');
        }
    }
    return text;
}
} // namespace

ObservableEvent * PluginEvent::GetCloned() const
{
    return new PluginEvent(*this);
}

ObservableEvent * PluginInitializeEvent::GetCloned() const
{
    return new PluginInitializeEvent(*this);
}

ObservableEvent * PluginUninitializeEvent::GetCloned() const
{
    return new PluginUninitializeEvent(*this);
}

Plugin::Plugin(unsigned int attributes) : Plugin(GetTypeName(), attributes) {}

Plugin::Plugin(std::string const & name, unsigned int attributes) : Plugin(static_cast<Plugin *>(nullptr))
{
    constructPlugin(name, attributes);
}

Plugin::Plugin(Plugin *) : Container(static_cast<Container *>(nullptr)) {}

Plugin::~Plugin()
{
    destroyPlugin();
}

void Plugin::constructPlugin(std::string const & name, unsigned int attributes)
{
    constructContainer(name, attributes);
}

void Plugin::destroyPlugin()
{
    leave();
    destroyContainer();
    SetCustomIcon("");
}

void Plugin::leave()
{
    removeInstance(m_filename, this);
    // Again if somebody who heard of it has put the plug-in elsewhere.
    while (m_container != nullptr) {
        detail::runGuarded([this] { SetContainer(nullptr); });
    }
}

std::string Plugin::GetTypeName()
{
    return "plugin";
}

Object * Plugin::createObject(std::string const &, unsigned int)
{
    return nullptr;
}

std::string Plugin::GetObjectTypeName() const
{
    return GetTypeName();
}

Plugin * Plugin::createPlugin(std::string const & filename)
{
    std::string const type = lowered(GetPluginType(filename));
    Object * const object = Tesseralis::Get().createObject(type, GetPluginName(filename), ObjectAttribute::All);
    auto * const plugin = dynamic_cast<Plugin *>(object);
    if (plugin == nullptr) {
        delete object;
        return nullptr;
    }
    plugin->SetFilename(filename);
    return plugin;
}

std::string Plugin::GetPluginSystemFilename(std::string const & filename)
{
    // A relative path with slashes isn't split: its directory is kept as it is.
    std::size_t const start = filename.starts_with('/') ? 0 : filename.rfind('/') + 1; // 0 where there is none
    PathParts parts = splitPath(filename.substr(start));
    // A file right inside a first directory begins with its separator, which joining adds anyway.
    parts.name = trimLeft(parts.name, "/\\");
    if (parts.extension == c_moduleExtension || parts.name.empty()) {
        return filename;
    }

    if (!parts.name.starts_with(c_modulePrefix)) {
        parts.name.insert(0, c_modulePrefix);
    }
    parts.extension = c_moduleExtension;
    return filename.substr(0, start) + makePath(parts);
}

std::string Plugin::GetPluginFilter()
{
    return GetPluginFilter("");
}

std::string Plugin::GetPluginFilter(std::string const & name)
{
    return std::string(c_modulePrefix) + "plugin_" + name + "*" + c_moduleExtension;
}

std::string Plugin::GetPluginType(std::string const & filename)
{
    return askForText(filename, "GetPluginType");
}

std::string Plugin::GetPluginName(std::string const & filename)
{
    return askForText(filename, "GetPluginName");
}

std::string Plugin::GetPluginDescription(std::string const & filename)
{
    return askForText(filename, "GetPluginDescription");
}

Version Plugin::GetPluginVersion(std::string const & filename)
{
    return Version(askForText(filename, "GetPluginVersion"));
}

Version Plugin::GetCoreVersion(std::string const & filename)
{
    return Version(askForText(filename, "GetCoreVersion"));
}

std::string Plugin::GetPluginInformation(std::string const & filename, std::string const & topic,
                                         std::string const & detail)
{
    return askForText(filename, "GetPluginInformation", topic.c_str(), detail.c_str());
}

void const * Plugin::GetPluginData(std::string const & filename, std::string const & key)
{
    return ask<void>(loadModule(filename), "GetPluginData", key.c_str());
}

std::string Plugin::GetPluginDirectory(std::string const & filename)
{
    return loadModule(filename).GetDirectory();
}

std::set<Plugin *> const & Plugin::GetPluginInstances(std::string const & filename)
{
    return GetInstances(GetPluginSystemFilename(filename));
}

std::set<Plugin *> & Plugin::GetInstances(std::string const & filename)
{
    static auto * const s_instances = new std::map<std::string, std::set<Plugin *>>;
    return (*s_instances)[filename];
}

void Plugin::addInstance(std::string const & filename, Plugin * plugin)
{
    GetInstances(filename).insert(plugin);
}

void Plugin::removeInstance(std::string const & filename, Plugin * plugin)
{
    GetInstances(filename).erase(plugin);
}

void Plugin::SetFilename(std::string const & givenFilename)
{
    std::string const filename = GetPluginSystemFilename(givenFilename);
    if (filename == m_filename) {
        return;
    }

    if (!m_filename.empty()) {
        removeInstance(m_filename, this);
    }
    m_filename = filename;
    if (!m_filename.empty()) {
        addInstance(m_filename, this);
    }
}

void Plugin::SetCustomIcon(std::string const & path)
{
    std::string const former = m_customIcon;
    m_customIcon = path;
    Tesseralis::Get().removeFileReference(former);
    Tesseralis::Get().addFileReference(path);
}

void Plugin::SetContainer(PluginContainer * container)
{
    if (container == m_container) {
        return;
    }
    if (container != nullptr) {
        container->add(this);
    } else {
        m_container->remove(this);
    }
}

void Plugin::suspend()
{
    if (IsInitialized() && m_container != nullptr) {
        m_container->suspend(this);
        uninitialize();
    }
}

void Plugin::resume()
{
    if (!IsInitialized() && m_container != nullptr) {
        initialize();
        if (m_container != nullptr) { // those who hear of it may take the plug-in out
            m_container->resume(this);
        }
    }
}

void Plugin::store(ArchiveElement & element)
{
    element.SetAttribute("filename", GetFilename());
    if (HasCustomIcon()) {
        element.SetAttribute("icon", GetCustomIcon());
    }
    if (m_container != nullptr) {
        element.SetAttribute("container", m_container->GetObjectName());
    }
    Container::store(element);
}

void Plugin::retrieve(ArchiveElement & element)
{
    Container::retrieve(element);
    SetFilename(element.GetAttribute("filename"));
    SetCustomIcon(element.GetAttribute("icon"));
    std::string const container = element.GetAttribute("container");
    Object * const object = container.empty() ? nullptr : Tesseralis::Get().GetObject(container);
    SetContainer(dynamic_cast<PluginContainer *>(object));
}

bool Plugin::IsRetrievable(ArchiveElement & element) const
{
    // Asked of the element that holds this one, since a property in this one may be named like the container.
    std::string const container = element.GetAttribute("container");
    bool const isContainerUnread = !container.empty() && element.GetParent().IsRetrievable("name", container);
    return !isContainerUnread && Container::IsRetrievable(element);
}

void Plugin::reportInitializeException() const noexcept
{
    detail::runGuarded([this] {
        std::cerr << GetObjectName() << " (" << GetFilename() << "): Unable to initialize plugin";
        try {
            throw;
        } catch (Exception const & exception) {
            std::cerr << " - " << exception.GetMessage() << std::endl;
        } catch (...) {
            std::cerr << "." << std::endl;
        }
    });
}

void Plugin::logOperationException(char const * operation) const noexcept
{
    detail::runGuarded([&] {
        std::string const name = GetPluginName();
        try {
            throw;
        } catch (Exception const & exception) {
            Logger::Get().exception(GetObjectName(), name, operation, exception);
        } catch (...) {
            Logger::Get().exception(GetObjectName(), name, operation);
        }
    });
}
} // namespace tesseralis
