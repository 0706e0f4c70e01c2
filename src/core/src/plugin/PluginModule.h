#pragma once

#include "object/CoreVersion.h"
#include "plugin/PluginInstance.h"

#include <string>
#include <type_traits>

namespace tesseralis::detail {
inline std::string textOrEmpty(char const * text)
{
    return text != nullptr ? std::string(text) : std::string();
}

/// Has the module's class answer, into a text that the module keeps. Null if that throws.
template <class Instance>
char const * answerInformation(std::string & answer, char const * topic, char const * detail) noexcept
{
    try {
        answer = Instance::GetPluginInformation(textOrEmpty(topic), textOrEmpty(detail));
        return answer.c_str();
    } catch (...) {
        return nullptr;
    }
}

template <class Instance>
void const * answerData(char const * key) noexcept
{
    if constexpr (requires { Instance::GetPluginData(std::string()); }) {
        try {
            return Instance::GetPluginData(textOrEmpty(key));
        } catch (...) {
        }
    }
    return nullptr;
}
} // namespace tesseralis::detail

/// Makes a shared object a module: writes its entry points, which are all that it exports. Once in a module, outside
/// all namespaces, behind its class:
///
///     TESSERALIS_PLUGIN_MODULE(Renderer, "Slices", "Draws slices of a volume.", "1.0.0-1 (20260701)", nullptr, Slices)
///
/// Kind         Renderer, Interactor, Compositor, Editor, Importer, Exporter or Host; the header of its plug-in class,
///              such as plugin/RendererPlugin.h, has to be there
/// name         for display
/// description  free text
/// version      in the form of Version
/// icon         null, or a pointer to bytes that stay: width, height, and red, green, blue, alpha of each pixel
/// Instance     a class that derives from Kind and PluginInstance<KindPlugin> and has a constructor from Plugin &,
/// which
///              may throw Exception to say why there can't be an instance. Static operations of it, where it has
///              them, answer questions of a free form:
///                  static std::string GetPluginInformation(std::string const & topic, std::string const & detail);
///                  static void const * GetPluginData(std::string const & key);
#define TESSERALIS_PLUGIN_MODULE(Kind, name, description, version, icon, Instance)                                     \
    static_assert(std::is_base_of_v<tesseralis::Kind, Instance>, "A module's class implements the kind's interface."); \
    static_assert(std::is_base_of_v<tesseralis::PluginInstance<tesseralis::Kind##Plugin>, Instance>,                   \
                  "A module's class derives from the PluginInstance of the kind's plug-in class.");                    \
    extern "C" {                                                                                                       \
    TESSERALIS_API char const * GetPluginType()                                                                        \
    {                                                                                                                  \
        return #Kind;                                                                                                  \
    }                                                                                                                  \
    TESSERALIS_API char const * GetPluginName()                                                                        \
    {                                                                                                                  \
        return name;                                                                                                   \
    }                                                                                                                  \
    TESSERALIS_API char const * GetPluginDescription()                                                                 \
    {                                                                                                                  \
        return description;                                                                                            \
    }                                                                                                                  \
    TESSERALIS_API char const * GetPluginVersion()                                                                     \
    {                                                                                                                  \
        return version;                                                                                                \
    }                                                                                                                  \
    TESSERALIS_API char const * GetCoreVersion()                                                                       \
    {                                                                                                                  \
        return tesseralis::c_coreVersion;                                                                              \
    }                                                                                                                  \
    TESSERALIS_API unsigned char const * GetPluginIcon()                                                               \
    {                                                                                                                  \
        return icon;                                                                                                   \
    }                                                                                                                  \
    TESSERALIS_API char const * GetPluginInformation(char const * topic, char const * detail)                          \
    {                                                                                                                  \
        static std::string s_answer;                                                                                   \
        return tesseralis::detail::answerInformation<Instance>(s_answer, topic, detail);                               \
    }                                                                                                                  \
    TESSERALIS_API void const * GetPluginData(char const * key)                                                        \
    {                                                                                                                  \
        return tesseralis::detail::answerData<Instance>(key);                                                          \
    }                                                                                                                  \
    TESSERALIS_API tesseralis::Kind * createPluginInstance(tesseralis::Plugin * plugin)                                \
    {                                                                                                                  \
        return new Instance(*plugin);                                                                                  \
    }                                                                                                                  \
    }
