#include "plugin/BasicPlugin.h"

#include "object/Guard.h"
#include "object/Version.h"
#include "plugin/Compositor.h"
#include "plugin/Editor.h"
#include "plugin/Exporter.h"
#include "plugin/Host.h"
#include "plugin/Importer.h"
#include "plugin/Interactor.h"
#include "plugin/ModuleGuard.h"
#include "plugin/Renderer.h"
#include "value/Variant.h"

#include <utility>

namespace tesseralis {
template <class T>
BasicPlugin<T>::BasicPlugin(unsigned int attributes) : BasicPlugin(Plugin::GetTypeName(), attributes)
{
}

template <class T>
BasicPlugin<T>::BasicPlugin(std::string const & name, unsigned int attributes)
    : BasicPlugin(static_cast<BasicPlugin *>(nullptr))
{
    constructBasicPlugin(name, attributes);
}

template <class T>
BasicPlugin<T>::BasicPlugin(BasicPlugin *) : Plugin(static_cast<Plugin *>(nullptr))
{
}

template <class T>
BasicPlugin<T>::~BasicPlugin()
{
    destroyBasicPlugin();
}

template <class T>
void BasicPlugin<T>::constructBasicPlugin(std::string const & name, unsigned int attributes)
{
    constructPlugin(name, attributes);
}

template <class T>
void BasicPlugin<T>::destroyBasicPlugin()
{
    leave();
    uninitialize();
    detail::ModuleCall::forget(*this);
    destroyPlugin();
}

template <class T>
BasicPlugin<T> * BasicPlugin<T>::createPlugin(std::string const & filename)
{
    Plugin * const plugin = Plugin::createPlugin(filename);
    auto * const typed = dynamic_cast<BasicPlugin *>(plugin);
    if (typed == nullptr) {
        delete plugin;
    }
    return typed;
}

template <class T>
std::string BasicPlugin<T>::GetPluginFilter(std::string const &)
{
    return Plugin::GetPluginFilter();
}

template <class T>
void BasicPlugin<T>::initialize()
{
    if (IsInitialized() || m_isInitializing) {
        return;
    }

    beginModification(new PluginInitializeEvent);
    // Where no instance could be made the module may still be loaded: let it go, so that a rebuilt file is found.
    m_library.uninitialize();
    Library library = ModuleGuard::load(GetFilename());
    m_isInitializing = true; // those who hear of what the instance sets may move the plug-in to another container
    createInstance(library);
    m_isInitializing = false;
    m_library = std::move(library);
    endModification();
}

template <class T>
void BasicPlugin<T>::createInstance(Library const & library)
{
    using Function = T * (*)(Plugin *);
    auto const function = reinterpret_cast<Function>(library.GetProcedure("createPluginInstance"));
    if (function == nullptr) {
        return;
    }
    try {
        m_instance = function(this);
    } catch (...) {
        reportInitializeException();
    }
}

template <class T>
void BasicPlugin<T>::uninitialize()
{
    // Keeps the code of the instance until that is gone, whatever its destructor does to the plug-in.
    Library library = std::move(m_library);
    if (!IsInitialized()) {
        return;
    }

    beginModification(new PluginUninitializeEvent);
    detail::runGuarded([this] { endModification(); });
    // Unless somebody who heard of it has had the plug-in uninitialised, and perhaps initialised anew, meanwhile.
    if (IsInitialized() && !m_library.IsInitialized()) {
        T * const instance = std::exchange(m_instance, nullptr);
        detail::ModuleCall::release(*this, std::move(library), [instance] { delete instance; });
    }
}

template <class T>
bool BasicPlugin<T>::IsInitialized() const
{
    return m_instance != nullptr;
}

template <class T>
T * BasicPlugin<T>::GetInstance()
{
    return m_instance;
}

template <class T>
T const * BasicPlugin<T>::GetInstance() const
{
    return m_instance;
}

template <class T>
void const * BasicPlugin<T>::GetPluginData(std::string const & key) const
{
    return Plugin::GetPluginData(GetFilename(), key);
}

template <class T>
std::string BasicPlugin<T>::GetPluginType() const
{
    return Plugin::GetPluginType(GetFilename());
}

template <class T>
std::string BasicPlugin<T>::GetPluginName() const
{
    return Plugin::GetPluginName(GetFilename());
}

template <class T>
std::string BasicPlugin<T>::GetPluginDescription() const
{
    return Plugin::GetPluginDescription(GetFilename());
}

template <class T>
Version BasicPlugin<T>::GetPluginVersion() const
{
    return Plugin::GetPluginVersion(GetFilename());
}

template <class T>
Version BasicPlugin<T>::GetCoreVersion() const
{
    return Plugin::GetCoreVersion(GetFilename());
}

template <class T>
std::string BasicPlugin<T>::GetPluginInformation(std::string const & topic, std::string const & detail) const
{
    return Plugin::GetPluginInformation(GetFilename(), topic, detail);
}

template <class T>
std::string BasicPlugin<T>::GetPluginDirectory() const
{
    return Plugin::GetPluginDirectory(GetFilename());
}

template class BasicPlugin<Compositor>;
template class BasicPlugin<Editor>;
template class BasicPlugin<Exporter>;
template class BasicPlugin<Host>;
template class BasicPlugin<Importer>;
template class BasicPlugin<Interactor>;
template class BasicPlugin<Renderer>;
} // namespace tesseralis
