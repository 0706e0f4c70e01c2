#pragma once

#include "object/Guard.h"
#include "object/Library.h"
#include "plugin/ModuleCall.h"
#include "plugin/Plugin.h"

#include <string>
#include <type_traits>

namespace tesseralis {
/// A plug-in for the modules that implement the interface T, which it implements itself by passing every call on to the
/// module's instance. Without an instance it acts like the interface's default, and nothing that a module throws gets
/// past it. Members are compiled in the library, for Renderer, Interactor, Compositor, Editor, Importer, Exporter and
/// Host; none is inline, so that there is one copy of each.
template <class T>
class TESSERALIS_API BasicPlugin : public T, public Plugin
{
public:
    explicit BasicPlugin(unsigned int attributes = 0);
    BasicPlugin(std::string const & name, unsigned int attributes);
    ~BasicPlugin() override;

    /// As Plugin::createPlugin(), and null if the module is of another kind.
    static BasicPlugin * createPlugin(std::string const & filename);
    using Plugin::GetPluginFilter;
    /// The filter for the modules of all kinds, whatever the argument.
    static std::string GetPluginFilter(std::string const & name);

    /// Loads the module and has it make an instance. A module that throws is reported on the standard error stream.
    void initialize() override;
    /// Deletes the instance and unloads the module.
    void uninitialize() override;
    bool IsInitialized() const override;

    using Plugin::GetCoreVersion;
    using Plugin::GetPluginData;
    using Plugin::GetPluginDescription;
    using Plugin::GetPluginDirectory;
    using Plugin::GetPluginInformation;
    using Plugin::GetPluginName;
    using Plugin::GetPluginType;
    using Plugin::GetPluginVersion;
    void const * GetPluginData(std::string const & key) const override;
    std::string GetPluginType() const override;
    std::string GetPluginName() const override;
    std::string GetPluginDescription() const override;
    Version GetPluginVersion() const override;
    Version GetCoreVersion() const override;
    std::string GetPluginInformation(std::string const & topic, std::string const & detail) const override;
    std::string GetPluginDirectory() const override;

protected:
    using Plugin::initialize;
    using Plugin::uninitialize;

    /// Null while the plug-in isn't initialised.
    T * GetInstance();
    T const * GetInstance() const;

    /// The result of a call on the instance; the default, if none is given a default-constructed value, where there is
    /// no instance. The same where the call throws, which is logged under the name of the operation.
    template <class Call, class... Default>
    std::invoke_result_t<Call, T &> forward(char const * operation, Call const & call, Default... fallback) const
    {
        if (m_instance != nullptr) {
            detail::ModuleCall const running(*this);
            try {
                return call(*m_instance);
            } catch (...) {
                running.HasPlugin() ? logOperationException(operation) : detail::logCaughtException();
            }
        }
        return std::invoke_result_t<Call, T &>(fallback...);
    }

    explicit BasicPlugin(BasicPlugin *);
    void constructBasicPlugin(std::string const & name, unsigned int attributes);
    void destroyBasicPlugin();

private:
    void createInstance(Library const & library);

    Library m_library;
    T * m_instance = nullptr;
    bool m_isInitializing = false;
};
} // namespace tesseralis
