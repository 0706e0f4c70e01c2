#include "object/Version.h"
#include "plugin/ModuleGuard.h"
#include "plugin/RendererPlugin.h"
#include "support/Modules.h"
#include "support/TemporaryDirectory.h"

#include <filesystem>
#include <fstream>

namespace {
char const * const c_entryPoints[] = {"GetPluginType",    "GetPluginName",  "GetPluginDescription",
                                      "GetPluginVersion", "GetCoreVersion", "GetPluginInformation",
                                      "GetPluginData",    "GetPluginIcon",  "createPluginInstance"};

// All that a module tells about itself, in this order.
Texts describe(std::string const & filename)
{
    return {Plugin::GetPluginType(filename),
            Plugin::GetPluginName(filename),
            Plugin::GetPluginDescription(filename),
            Plugin::GetPluginVersion(filename).GetString(),
            Plugin::GetCoreVersion(filename).GetString(),
            Plugin::GetPluginInformation(filename, "topic", "fault"),
            Plugin::GetPluginData(filename, "fault") != nullptr ? "data" : "no data"};
}

Texts const c_complete = {"ReNdErEr", "Complete", "Tells everything.", "1.2.3-4 (20260701) debug", "0.7.0-5 (20250101)",
                          "topic",    "data"};
Texts const c_empty = {"", "", "", "0.0.0-0 (0)", "0.0.0-0 (0)", "", "no data"};
} // namespace

TEST(PluginFilename, TakesTheFormOfThisSystem)
{
    char const * const cases[][2] = {
        {"plugin_a.dll", "libplugin_a.so"},
        {"libplugin_a.dll", "libplugin_a.so"},
        {"libplugin_a.b", "libplugin_a.so"},
        {"/opt/x/../lib/plugin_a.so", "/opt/x/../lib/plugin_a.so"},
        {"/tmp/plugin_a.dll", "/tmp/libplugin_a.so"}, // right inside the drive
        {"C:\\modules\\plugin_a.dll", "C:\\modules\\libplugin_a.so"},
        {"C:\\plugin_a.dll", "C:\\libplugin_a.so"},
        {"modules.d/plugin_a", "modules.d/libplugin_a.so"}, // relative
        {"", ""},
        {"/tmp/modules/", "/tmp/modules/"},
    };
    for (auto const & [given, expected] : cases) {
        EXPECT_EQ(Plugin::GetPluginSystemFilename(given), expected) << given;
        EXPECT_EQ(Plugin::GetPluginSystemFilename(expected), expected);
    }
    EXPECT_EQ(Plugin::GetPluginFilter(), "libplugin_*.so");
    EXPECT_EQ(Plugin::GetPluginFilter("renderer_"), "libplugin_renderer_*.so");
    EXPECT_EQ(RendererPlugin::GetPluginFilter("renderer_"), "libplugin_*.so");
}

TEST(PluginMetadata, IsReadByNameAndEmptyWhereTheEntryPointIsMissing)
{
    EXPECT_EQ(describe(moduleFile("complete")), c_complete);
    EXPECT_EQ(describe(std::string(TEST_MODULES) + "plugin_complete.dll"), c_complete);
    EXPECT_EQ(Plugin::GetPluginDirectory(moduleFile("complete")), TEST_MODULES);
    for (std::size_t i = 0; i < std::size(c_entryPoints); ++i) {
        Texts expected = c_complete;
        expected[0] = "renderer";
        if (i < expected.size()) {
            expected[i] = c_empty[i];
        }
        EXPECT_EQ(describe(moduleFile(std::string("without_") + c_entryPoints[i])), expected);
    }

    TemporaryDirectory directory;
    std::string const text = directory.GetPath("libplugin_text.so");
    std::ofstream(text) << "#!/bin/sh\nexit 1\n";
    for (std::string const & filename : {moduleFile("without_all"), moduleFile("null"), moduleFile("throwing"), text,
                                         directory.GetPath(""), std::string(), std::string("libplugin_none.so")}) {
        EXPECT_EQ(describe(filename), c_empty) << filename;
        EXPECT_EQ(Plugin::createPlugin(filename), nullptr) << filename;
    }
    EXPECT_FALSE(isMapped(TEST_MODULES));
}

TEST(PluginMacro, WritesTheEntryPointsFromTheClass)
{
    auto const plugin = makePlugin<RendererPlugin>();
    std::string const filename = plugin->GetFilename();
    std::string const core = Tesseralis::Get().GetVersion().GetString();
    EXPECT_EQ(describe(filename), (Texts{"Renderer", "Sample", "Notes what is called.", "1.0.0-1 (20260701)", core,
                                         "topic/fault", "no data"})); // it throws
    EXPECT_EQ(Plugin::GetPluginInformation(filename, "fault", ""), "");
    EXPECT_FALSE(isMapped(filename));

    // The module and the library share what is there once for each type.
    plugin->initialize();
    EXPECT_EQ(plugin->GetPluginData("registry"), &Tesseralis::Get());
    EXPECT_EQ(plugin->GetPluginData("type"), &typeid(BasicPlugin<Renderer>));
    EXPECT_EQ(plugin->GetPluginData("function"), reinterpret_cast<void const *>(&BasicPlugin<Renderer>::createPlugin));
}

TEST(PluginCreation, TakesTypeAndNameFromTheModule)
{
    registerObjectTypes();
    std::string const filename = moduleFile("complete");
    std::unique_ptr<Plugin> const plugin(Plugin::createPlugin(filename));
    ASSERT_NE(dynamic_cast<RendererPlugin *>(plugin.get()), nullptr);
    EXPECT_EQ(plugin->GetObjectName(), "Complete");
    EXPECT_TRUE(plugin->HasAttribute(ObjectAttribute::All));
    EXPECT_FALSE(plugin->IsInitialized());
    EXPECT_EQ(Plugin::GetPluginInstances(filename), std::set<Plugin *>{plugin.get()});
    std::unique_ptr<BasicPlugin<Renderer>> const typed(BasicPlugin<Renderer>::createPlugin(filename));
    EXPECT_EQ(typed->GetFilename(), filename);

    for (char const * name : {"unknown_type", "no_plugin_type", "without_GetPluginType", "null"}) {
        EXPECT_EQ(Plugin::createPlugin(moduleFile(name)), nullptr) << name;
    }
    EXPECT_EQ(BasicPlugin<Renderer>::createPlugin(moduleFile("sample_host")), nullptr);
    EXPECT_TRUE(Plugin::GetPluginInstances(moduleFile("sample_host")).empty());
    EXPECT_EQ(Tesseralis::Get().GetObjects().size(), 2u) << "nothing else is left behind";
}

TEST(PluginBinding, FollowsTheFilenameAndTheIcon)
{
    auto const instances = [](char const * name) { return Plugin::GetPluginInstances(name).size(); };
    auto const references = [] { return Tesseralis::Get().GetFileReferences(); };
    auto plugin = std::make_unique<RendererPlugin>();
    plugin->SetFilename("/opt/modules/plugin_a.dll");
    EXPECT_EQ(instances("/opt/modules/plugin_a"), 1u);
    plugin->SetFilename("/opt/modules/plugin_b.so");
    EXPECT_EQ(instances("/opt/modules/plugin_a"), 0u);
    EXPECT_EQ(instances("/opt/modules/plugin_b.so"), 1u);

    plugin->SetCustomIcon("a.png");
    plugin->SetCustomIcon("b.png");
    EXPECT_EQ(references(), std::set<std::string>{"b.png"});
    plugin.reset();
    EXPECT_TRUE(references().empty());
    EXPECT_EQ(instances("/opt/modules/plugin_b.so"), 0u);
}

TEST(PluginSuspension, PicksUpARebuiltModule)
{
    TemporaryDirectory directory;
    std::string const filename = directory.GetPath("libplugin_renderer.so");
    std::filesystem::copy_file(moduleFile("sample_renderer"), filename);
    Container container(0u);
    auto * const plugin = new RendererPlugin;
    plugin->SetFilename(filename);
    plugin->resume(); // nothing, outside a container
    EXPECT_FALSE(plugin->IsInitialized());
    container.add(plugin);
    EXPECT_EQ(plugin->GetButtonRole(0), "1.0.0-1 (20260701)");

    plugin->suspend();
    EXPECT_FALSE(isMapped(filename));
    EXPECT_TRUE(container.HasPlugin(plugin));
    std::filesystem::remove(filename);
    std::filesystem::copy_file(moduleFile("rebuilt_renderer"), filename);
    plugin->resume();
    EXPECT_EQ(plugin->GetButtonRole(0), "2.0.0-1 (20260702)");

    // One that goes from the disk works on, and is missing afterwards.
    std::filesystem::remove(filename);
    EXPECT_EQ(plugin->GetButtonRole(0), "2.0.0-1 (20260702)");
    EXPECT_EQ(plugin->GetPluginName(), "Sample");
    plugin->suspend();
    plugin->resume();
    EXPECT_FALSE(plugin->IsInitialized());
}

TEST(ModuleGuardTest, IsAskedBeforeAnyModuleFileIsLoaded)
{
    std::string const filename = moduleFile("sample_renderer");
    Texts asked;
    bool answer = true;
    ModuleGuard::SetTest([&](std::string const & name) {
        asked.push_back(name);
        return answer;
    });
    EXPECT_EQ(Plugin::GetPluginName(std::string(TEST_MODULES) + "plugin_sample_renderer.dll"), "Sample");
    EXPECT_EQ(asked, Texts{filename});

    answer = false;
    EXPECT_EQ(describe(filename), c_empty);
    auto const plugin = makePlugin<RendererPlugin>();
    plugin->initialize();
    EXPECT_FALSE(plugin->IsInitialized());
    EXPECT_EQ(asked, Texts(2 + c_empty.size(), filename));
    EXPECT_FALSE(isMapped(filename));

    ModuleGuard::SetTest([](std::string const &) -> bool { throw 42; });
    EXPECT_EQ(logOf([&] { plugin->initialize(); }), "Unknown error.\n\n");
    EXPECT_FALSE(plugin->IsInitialized());
    ModuleGuard::SetTest({});
    plugin->initialize();
    EXPECT_TRUE(plugin->IsInitialized());
}
