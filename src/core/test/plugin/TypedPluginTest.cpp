#include "plugin/CompositorPlugin.h"
#include "plugin/EditorPlugin.h"
#include "plugin/ExporterPlugin.h"
#include "plugin/HostPlugin.h"
#include "plugin/ImporterPlugin.h"
#include "plugin/InteractorPlugin.h"
#include "plugin/RendererPlugin.h"
#include "support/Modules.h"
#include "value/Variant.h"
#include "view/Controller.h"

namespace {
Controller const s_controller;
alignas(16) char s_anything[64]; // what no module looks at
Canvas & s_canvas = reinterpret_cast<Canvas &>(s_anything);
Resource & s_resource = reinterpret_cast<Resource &>(s_anything);
std::string const c_version = "1.0.0-1 (20260701)";

std::string textOf(bool value)
{
    return value ? "true" : "false";
}

std::string textOf(void const * pointer)
{
    return pointer != nullptr ? "something" : "null";
}

template <class T>
std::string textOf(std::list<T *> const & list)
{
    return std::to_string(list.size());
}

struct Operation
{
    std::string name;
    std::function<std::string()> call; // gives the result as text
    std::string result = "";           // of the module
    std::string fallback = "";
};
using Operations = std::vector<Operation>;

template <class P>
Operations viewOperations(P & plugin)
{
    return {{"idle", [&] { return plugin.idle(), ""; }},
            {"reshape", [&] { return plugin.reshape(1, 2), ""; }},
            {"button", [&] { return textOf(plugin.button(s_controller)); }, "true", "false"},
            {"cursor", [&] { return textOf(plugin.cursor(s_controller)); }, "true", "false"},
            {"GetButtonRole", [&] { return plugin.GetButtonRole(0); }, c_version},
            {"GetCursorRole", [&] { return plugin.GetCursorRole(0); }, c_version}};
}

template <class P>
Operations operationsOf(P & plugin)
{
    Operations operations = viewOperations(plugin);
    operations.push_back({"display", [&] { return plugin.display(s_canvas), ""; }});
    operations.push_back({"overlay", [&] { return plugin.overlay(s_canvas), ""; }});
    return operations;
}

template <>
Operations operationsOf(CompositorPlugin & plugin)
{
    Operations operations = viewOperations(plugin);
    operations.push_back({"addDisplayable", [&] { return plugin.addDisplayable(nullptr), ""; }});
    operations.push_back({"removeDisplayable", [&] { return plugin.removeDisplayable(nullptr), ""; }});
    operations.push_back({"display", [&] { return textOf(plugin.display({}, {})); }, "false", "true"});
    return operations;
}

template <>
Operations operationsOf(EditorPlugin & plugin)
{
    return {{"GetWidget", [&] { return textOf(plugin.GetWidget()); }, "something", "null"},
            {"GetToolWidgets", [&] { return textOf(plugin.GetToolWidgets()); }, "1", "0"},
            {"GetDockWidgets", [&] { return textOf(plugin.GetDockWidgets()); }, "1", "0"},
            {"GetMainActions", [&] { return textOf(plugin.GetMainActions()); }, "1", "0"},
            {"GetQuickActions", [&] { return textOf(plugin.GetQuickActions()); }, "1", "0"},
            {"onInitialized", [&] { return plugin.onInitialized(), ""; }}};
}

template <>
Operations operationsOf(ImporterPlugin & plugin)
{
    return {{"load", [&] { return textOf(plugin.load(s_resource)); }, "something", "null"}};
}

template <>
Operations operationsOf(ExporterPlugin & plugin)
{
    return {{"save", [&] { return textOf(plugin.save(s_resource)); }, "something", "null"}};
}

template <>
Operations operationsOf(HostPlugin &)
{
    return {}; // ConsoleTest has it
}

template <class P>
class TypedPlugin : public testing::Test
{
protected:
    TypedPlugin() { m_plugin.SetFilename(m_filename); }

    std::string const m_filename = moduleFile("sample_" + P::GetTypeName());
    P m_plugin{"specimen", ObjectAttribute::Registered};
};
using Kinds = testing::Types<RendererPlugin, InteractorPlugin, CompositorPlugin, EditorPlugin, ImporterPlugin,
                             ExporterPlugin, HostPlugin>;
TYPED_TEST_SUITE(TypedPlugin, Kinds);
} // namespace

TYPED_TEST(TypedPlugin, PassesOnWhatTheModuleDoesAndNothingThatItThrows)
{
    Operations const operations = operationsOf(this->m_plugin);
    for (Operation const & operation : operations) {
        EXPECT_EQ(operation.call(), operation.fallback) << operation.name << " without an instance";
    }
    this->m_plugin.initialize();
    for (Operation const & operation : operations) {
        EXPECT_EQ(operation.call(), operation.result) << operation.name;
        EXPECT_EQ(this->m_plugin.GetProperty("Called"), Variant(operation.name));
        for (int const fault : {1, 2, 3, 4}) {
            this->m_plugin.GetProperty("Fault") = fault;
            std::string result;
            auto const [output, error] = outputOf([&] { result = operation.call(); });
            EXPECT_EQ(result, operation.fallback) << operation.name << fault;
            EXPECT_EQ(output + error, "[specimen] Sample::" + operation.name + "(): \n" +
                                          (fault == 1 ? "It is broken." : "Unknown error.") + "\n\n");
        }
        this->m_plugin.GetProperty("Fault") = 0;
    }
    this->m_plugin.uninitialize();
    EXPECT_EQ(this->m_plugin.GetProperty("Called"), Variant("destructor"));
    EXPECT_FALSE(isMapped(this->m_filename));
}

TYPED_TEST(TypedPlugin, ReportsAModuleThatMakesNoInstance)
{
    Recorder recorder(this->m_plugin);
    std::string const head = "specimen (" + this->m_filename + "): Unable to initialize plugin";
    for (int const fault : {1, 2, 3, 4}) {
        this->m_plugin.GetProperty("Creation fault") = fault;
        auto const [output, error] = outputOf([&] { this->m_plugin.initialize(); });
        EXPECT_EQ(error, head + (fault == 1 ? " - It is broken.\n" : ".\n"));
        EXPECT_EQ(output, "");
        EXPECT_FALSE(this->m_plugin.IsInitialized());
        EXPECT_TRUE(isMapped(this->m_filename));
        EXPECT_EQ(recorder.GetCountOf<PluginInitializeEvent>(), static_cast<std::size_t>(fault));
        this->m_plugin.uninitialize();
        EXPECT_FALSE(isMapped(this->m_filename));
    }
    EXPECT_EQ(recorder.GetCountOf<PluginUninitializeEvent>(), 0u);
}

TYPED_TEST(TypedPlugin, TakesNoModuleOfAnotherKind)
{
    std::string const type = TypeParam::GetTypeName();
    std::string const filename = moduleFile(type == "host" ? "sample_editor" : "sample_host");
    this->m_plugin.SetFilename(filename);
    auto const [output, error] = outputOf([&] { this->m_plugin.initialize(); });
    EXPECT_EQ(error, "specimen (" + filename + "): Unable to initialize plugin - Plugin instance type mismatch!\n");
    EXPECT_FALSE(this->m_plugin.IsInitialized());

    bool const canBeEnabled = type != "importer" && type != "exporter" && type != "host";
    EXPECT_EQ(this->m_plugin.HasProperty("Enabled"), canBeEnabled);
    EXPECT_EQ(this->m_plugin.GetProperty("Enabled", Variant(false)), Variant(false));
    EXPECT_EQ(this->m_plugin.GetObjectTypeName(), type);
}

TEST(PluginInitialization, WithoutAnInstanceIsSilent)
{
    for (char const * name : {"without_all", "without_9", "complete", "no_such_file"}) {
        RendererPlugin plugin;
        plugin.SetFilename(moduleFile(name));
        Recorder recorder(plugin);
        auto const [output, error] = outputOf([&] { plugin.initialize(); });
        EXPECT_EQ(output + error, "") << name;
        EXPECT_FALSE(plugin.IsInitialized()) << name;
        EXPECT_EQ(recorder.GetCountOf<PluginInitializeEvent>(), 1u) << name;
    }
}

TEST(PluginInitialization, IsDoneOnceAndSeenByObservers)
{
    RendererPlugin plugin;
    plugin.SetFilename(moduleFile("sample_renderer"));
    Recorder recorder(plugin);
    std::vector<bool> initialized;
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (dynamic_cast<PluginEvent const *>(&event) != nullptr) {
            initialized.push_back(plugin.IsInitialized());
        }
    });
    plugin.initialize();
    plugin.initialize();
    plugin.uninitialize();
    plugin.uninitialize();
    EXPECT_EQ(initialized, (std::vector<bool>{true, true}));
}

TEST(EditorPluginStatus, ReachesAHostThatDerivesFromThePlugin)
{
    class StatusBar : public EditorPlugin
    {
    public:
        ~StatusBar() override { destroyEditorPlugin(); }
        void setStatusMessage(std::string const & text) override { shown = text; }
        using EditorPlugin::GetInstance;
        std::string shown;
    };
    StatusBar plugin;
    plugin.SetFilename(moduleFile("sample_editor"));
    plugin.initialize();
    plugin.onInitialized();
    EXPECT_EQ(plugin.shown, "Ready.");
    EXPECT_NE(plugin.GetInstance(), nullptr);
}
