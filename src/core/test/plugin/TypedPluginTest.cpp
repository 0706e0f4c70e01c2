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

struct Operation
{
    std::string name;
    std::function<bool()> call; // Whether the result isn't the default.
    bool hasResult = true;
};
using Operations = std::vector<Operation>;

template <class P>
Operations viewOperations(P & plugin)
{
    return {{"idle", [&] { return plugin.idle(), false; }, false},
            {"reshape", [&] { return plugin.reshape(1, 2), false; }, false},
            {"button", [&] { return plugin.button(s_controller); }},
            {"cursor", [&] { return plugin.cursor(s_controller); }},
            {"GetButtonRole", [&] { return !plugin.GetButtonRole(0).empty(); }},
            {"GetCursorRole", [&] { return !plugin.GetCursorRole(0).empty(); }}};
}

template <class P>
Operations operationsOf(P & plugin)
{
    Operations operations = viewOperations(plugin);
    operations.push_back({"display", [&] { return plugin.display(s_canvas), false; }, false});
    operations.push_back({"overlay", [&] { return plugin.overlay(s_canvas), false; }, false});
    return operations;
}

template <>
Operations operationsOf(CompositorPlugin & plugin)
{
    Operations operations = viewOperations(plugin);
    operations.push_back({"addDisplayable", [&] { return plugin.addDisplayable(nullptr), false; }, false});
    operations.push_back({"removeDisplayable", [&] { return plugin.removeDisplayable(nullptr), false; }, false});
    operations.push_back({"display", [&] { return !plugin.display({}, {}); }});
    return operations;
}

template <>
Operations operationsOf(EditorPlugin & plugin)
{
    return {{"GetWidget", [&] { return plugin.GetWidget() != nullptr; }},
            {"GetToolWidgets", [&] { return !plugin.GetToolWidgets().empty(); }},
            {"GetDockWidgets", [&] { return !plugin.GetDockWidgets().empty(); }},
            {"GetMainActions", [&] { return !plugin.GetMainActions().empty(); }},
            {"GetQuickActions", [&] { return !plugin.GetQuickActions().empty(); }},
            {"onInitialized", [&] { return plugin.onInitialized(), false; }, false}};
}

template <>
Operations operationsOf(ImporterPlugin & plugin)
{
    return {{"load", [&] { return plugin.load(s_resource) != nullptr; }}};
}

template <>
Operations operationsOf(ExporterPlugin & plugin)
{
    return {{"save", [&] { return plugin.save(s_resource) != nullptr; }}};
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
    TypeParam & plugin = this->m_plugin;
    Operations const operations = operationsOf(plugin);
    for (auto const & [name, call, hasResult] : operations) {
        EXPECT_FALSE(call()) << name << " without an instance";
    }
    plugin.initialize();
    for (auto const & [name, call, hasResult] : operations) {
        EXPECT_EQ(call(), hasResult) << name;
        EXPECT_EQ(plugin.GetProperty("Called"), Variant(name));
        for (int const fault : {1, 2, 3, 4}) {
            plugin.GetProperty("Fault") = fault;
            auto const [output, error] = outputOf([&] { EXPECT_FALSE(call()) << name << fault; });
            EXPECT_EQ(output + error, "[specimen] Sample::" + name + "(): \n" +
                                          (fault == 1 ? "It is broken." : "Unknown error.") + "\n\n");
        }
        plugin.GetProperty("Fault") = 0;
    }
    plugin.uninitialize();
    EXPECT_EQ(plugin.GetProperty("Called"), Variant("destructor"));
    EXPECT_FALSE(isMapped(this->m_filename));
}

TYPED_TEST(TypedPlugin, ReportsAModuleThatMakesNoInstance)
{
    TypeParam & plugin = this->m_plugin;
    Recorder recorder(plugin);
    auto const expectError = [&](std::string const & reason) {
        auto const [output, error] = outputOf([&] { plugin.initialize(); });
        EXPECT_EQ(error, "specimen (" + plugin.GetFilename() + "): Unable to initialize plugin" + reason + "\n");
        EXPECT_EQ(output, "");
        EXPECT_FALSE(plugin.IsInitialized());
        EXPECT_TRUE(isMapped(plugin.GetFilename()));
        plugin.uninitialize();
        EXPECT_FALSE(isMapped(plugin.GetFilename()));
    };
    for (int const fault : {1, 2, 3, 4}) {
        plugin.GetProperty("Creation fault") = fault;
        expectError(fault == 1 ? " - It is broken." : ".");
    }
    std::string const type = TypeParam::GetTypeName();
    plugin.SetFilename(moduleFile(type == "host" ? "sample_editor" : "sample_host"));
    expectError(" - Plugin instance type mismatch!");
    EXPECT_EQ(recorder.GetCountOf<PluginInitializeEvent>(), 5u);
    EXPECT_EQ(recorder.GetCountOf<PluginUninitializeEvent>(), 0u);

    EXPECT_EQ(plugin.GetObjectTypeName(), type);
    bool const canBeEnabled = type != "importer" && type != "exporter" && type != "host";
    EXPECT_EQ(plugin.HasProperty("Enabled"), canBeEnabled);
    EXPECT_EQ(plugin.GetProperty("Enabled", Variant(false)), Variant(false));
}

TEST(PluginInitialization, IsDoneOnceAndSilentWithoutAnInstance)
{
    for (char const * name :
         {"sample_renderer", "without_all", "without_createPluginInstance", "complete", "no_such_file"}) {
        RendererPlugin plugin;
        plugin.SetFilename(moduleFile(name));
        bool const isGood = name == std::string("sample_renderer");
        Recorder recorder(plugin);
        recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
            if (dynamic_cast<PluginEvent const *>(&event) != nullptr) {
                EXPECT_EQ(plugin.IsInitialized(), isGood) << name;
            }
        });
        auto const [output, error] = outputOf([&] {
            plugin.initialize();
            EXPECT_EQ(plugin.IsInitialized(), isGood) << name;
            EXPECT_EQ(recorder.GetCountOf<PluginInitializeEvent>(), 1u) << name;
            plugin.initialize();
            plugin.uninitialize();
            plugin.uninitialize();
        });
        EXPECT_EQ(output + error, "") << name;
        EXPECT_EQ(recorder.GetCountOf<PluginUninitializeEvent>(), isGood ? 1u : 0u) << name;
    }
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
