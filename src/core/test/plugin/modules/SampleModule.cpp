// One source for a good module of each kind. KIND is its interface and PLUGIN its plug-in class, of which HEADER is the
// header; IS_ and the kind is defined, and VERSION. Each operation notes its name in the plug-in's property "Called",
// throws what the property "Fault" says, and gives something other than the default.

#include HEADER

#include "object/Tesseralis.h"
#include "plugin/PluginModule.h"
#include "value/Variant.h"

#include <stdexcept>

using namespace tesseralis;

namespace {
struct OwnType // which goes with the module
{
};

void throwFault(int fault)
{
    if (fault == 1) {
        throw Exception("It is broken.");
    } else if (fault == 2) {
        throw std::runtime_error("It is broken.");
    } else if (fault == 3) {
        throw 42;
    } else if (fault == 4) {
        throw OwnType();
    }
}

#define OPERATION(Result, name, parameters, result)                                                                    \
    Result name parameters override                                                                                    \
    {                                                                                                                  \
        note(#name);                                                                                                   \
        throwFault(GetPlugin().GetProperty("Fault", Variant(0)));                                                      \
        return static_cast<Result>(result);                                                                            \
    }

class Sample : public KIND, public PluginInstance<PLUGIN>
{
public:
    explicit Sample(Plugin & plugin) : PluginInstance(plugin)
    {
        throwFault(GetPlugin().GetProperty("Creation fault", Variant(0)));
    }
    ~Sample() override { note("destructor"); }

    // Addresses of what is there once for each type or in the process.
    static void const * GetPluginData(std::string const & key)
    {
        throwFault(key == "fault" ? 1 : 0);
        return key == "registry" ? static_cast<void const *>(&Tesseralis::Get())
               : key == "type"   ? static_cast<void const *>(&typeid(BasicPlugin<KIND>))
                                 : reinterpret_cast<void const *>(&BasicPlugin<KIND>::createPlugin);
    }
    static std::string GetPluginInformation(std::string const & topic, std::string const & detail)
    {
        throwFault(topic == "fault" ? 4 : 0);
        return topic + "/" + detail;
    }

#if defined(IS_Renderer) || defined(IS_Interactor)
    OPERATION(void, display, (Canvas &), 0)
    OPERATION(void, overlay, (Canvas &), 0)
#endif
#if defined(IS_Compositor)
    using Displayables = std::list<Displayable *>;
    using Updates = std::map<Displayable *, unsigned int>;
    OPERATION(void, addDisplayable, (Displayable *), 0)
    OPERATION(void, removeDisplayable, (Displayable *), 0)
    OPERATION(bool, display, (Displayables const &, Updates const &), false)
#endif
#if defined(IS_Renderer) || defined(IS_Interactor) || defined(IS_Compositor)
    OPERATION(void, idle, (), 0)
    OPERATION(void, reshape, (unsigned int, unsigned int), 0)
    OPERATION(bool, button, (Controller const &), true)
    OPERATION(bool, cursor, (Controller const &), true)
    OPERATION(std::string, GetButtonRole, (unsigned int) const, VERSION)
    OPERATION(std::string, GetCursorRole, (unsigned int) const, VERSION)
#endif
#if defined(IS_Editor)
    OPERATION(Widget *, GetWidget, (), reinterpret_cast<Widget *>(this))
    OPERATION(std::list<Widget *>, GetToolWidgets, (), 1)
    OPERATION(std::list<Widget *>, GetDockWidgets, (), 1)
    OPERATION(std::list<Action *>, GetMainActions, (), 1)
    OPERATION(std::list<Action *>, GetQuickActions, (), 1)
    OPERATION(void, onInitialized, (), GetPlugin().setStatusMessage("Ready."))
#endif
#if defined(IS_Importer)
    OPERATION(Loader *, load, (Resource &), reinterpret_cast<Loader *>(this))
#endif
#if defined(IS_Exporter)
    OPERATION(Saver *, save, (Resource &), reinterpret_cast<Saver *>(this))
#endif
#if defined(IS_Host)
    Variant evaluate(std::string const & text, Object *) const override
    {
        int const fault = GetPlugin().GetProperty("Fault", Variant(0));
        GetPlugin().message("m " + text);
        GetPlugin().information("i " + text);
        GetPlugin().warning("w " + text);
        GetPlugin().error("e " + text); // the plug-in may be gone behind this
        throwFault(fault);
        return Variant(text);
    }
#endif

private:
    void note(char const * operation) const
    {
        GetPlugin().GetProperty("Called") = operation;
    }
};
} // namespace

#define EXPANDED(...) TESSERALIS_PLUGIN_MODULE(__VA_ARGS__)
EXPANDED(KIND, "Sample", "Notes what is called.", VERSION, nullptr, Sample)
