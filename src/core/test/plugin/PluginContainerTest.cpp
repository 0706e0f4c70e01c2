#include "plugin/EditorPlugin.h"
#include "plugin/RendererPlugin.h"
#include "support/Modules.h"
#include "value/Variant.h"

namespace {
std::vector<EditorPlugin *> editorsOf(Container & container)
{
    std::vector<EditorPlugin *> editors;
    for (ContainerEditorIterator i(container); !i.IsAtEnd(); ++i) {
        editors.push_back(&*i);
    }
    return editors;
}
} // namespace

TEST(PluginContainerOwnership, MovesWithAddAndComesBackWithRemove)
{
    Container first(0u);
    Container second(0u);
    auto const plugin = makePlugin<RendererPlugin>();
    Recorder atFirst(first);
    Recorder atPlugin(*plugin);
    atFirst.SetReaction([&](Observable const &, ObservableEvent const & event) {
        EXPECT_EQ(dynamic_cast<PluginContainerPluginEvent const &>(event).GetPlugin(), plugin.get());
        EXPECT_TRUE(first.HasPlugin(plugin.get()) && plugin->GetContainer() == &first && plugin->IsInitialized());
    });

    first.add(plugin.get());
    first.add(plugin.get());
    plugin->SetContainer(&second);
    plugin->SetContainer(&second);
    EXPECT_FALSE(first.HasPlugin(plugin.get()));
    EXPECT_EQ(plugin->GetContainer(), &second);
    EXPECT_EQ(atFirst.GetCount(), 2u);
    EXPECT_TRUE(atFirst.GetAs<PluginContainerAdditionEvent>(0) && atFirst.GetAs<PluginContainerRemovalEvent>(1));
    EXPECT_EQ(atPlugin.GetCountOf<PluginInitializeEvent>(), 2u);
    EXPECT_EQ(atPlugin.GetCountOf<PluginUninitializeEvent>(), 1u);

    plugin->SetContainer(nullptr);
    first.remove(plugin.get());
    EXPECT_EQ(plugin->GetContainer(), nullptr);
    EXPECT_FALSE(plugin->IsInitialized());
}

TEST(PluginContainerOwnership, EndsWithThePluginOrWithTheContainer)
{
    auto container = std::make_unique<Container>(0u);
    Recorder recorder(*container);
    Recorder atPlugins;
    auto const addPlugins = [&] {
        for (int i = 0; i < 3; ++i) {
            Plugin * const plugin = makePlugin<RendererPlugin>().release();
            plugin->addObserver(&atPlugins);
            container->add(plugin);
        }
    };
    addPlugins();
    delete &*PluginContainerIterator(*container);
    EXPECT_EQ(recorder.GetCountOf<PluginContainerRemovalEvent>(), 1u);
    container->clearPlugins();
    EXPECT_TRUE(PluginContainerIterator(*container).IsAtEnd());
    EXPECT_EQ(atPlugins.GetCountOf<ObservableDestructionEvent>(), 3u);

    addPlugins();
    container.reset();
    EXPECT_EQ(recorder.GetCountOf<PluginContainerRemovalEvent>(), 6u);
    EXPECT_NE(recorder.GetAs<ObservableDestructionEvent>(recorder.GetCount() - 1), nullptr);
    EXPECT_EQ(atPlugins.GetCountOf<ObservableDestructionEvent>(), 6u);
    EXPECT_FALSE(isMapped(moduleFile("sample_renderer")));
}

TEST(PluginContainerOwnership, OfPluginsInARingEndsWithAnyOfThem)
{
    for (int const size : {1, 2, 3}) {
        for (bool const clear : {false, true}) {
            Recorder recorder;
            std::vector<Plugin *> plugins(static_cast<std::size_t>(size));
            for (Plugin *& plugin : plugins) {
                plugin = makePlugin<RendererPlugin>().release();
                plugin->addObserver(&recorder);
            }
            for (std::size_t i = 0; i < plugins.size(); ++i) {
                plugins[i]->add(plugins[(i + 1) % plugins.size()]);
            }
            if (clear) {
                plugins[0]->clearPlugins();
            } else {
                delete plugins[0];
            }
            EXPECT_EQ(recorder.GetCountOf<ObservableDestructionEvent>(), plugins.size()) << clear;
        }
    }
}

TEST(PluginContainerObserver, ThatThrowsKeepsNoPluginFromComingOrGoing)
{
    auto const refuse = [](Observable const &, ObservableEvent const &) { throw Exception("No."); };
    Container container(0u);
    Recorder recorder(container);
    recorder.SetReaction(refuse);
    auto plugin = makePlugin<RendererPlugin>();
    EXPECT_EQ(messageOf([&] { container.add(plugin.get()); }), "No.");
    EXPECT_TRUE(plugin->IsInitialized());
    EXPECT_EQ(logOf([&] { plugin.reset(); }), "No.\n\n");
    EXPECT_TRUE(PluginContainerIterator(container).IsAtEnd());

    plugin = makePlugin<RendererPlugin>();
    Recorder atPlugin(*plugin);
    atPlugin.SetReaction(refuse);
    recorder.SetReaction({});
    EXPECT_EQ(messageOf([&] { container.add(plugin.get()); }), "No.");
    EXPECT_TRUE(container.HasPlugin(plugin.get()));
    recorder.clear();
    container.GetProperty("any") = 1;
    EXPECT_NE(recorder.GetCount(), 0u) << "a bracket is still open";
}

TEST(PluginContainerObserver, ThatMovesAPluginOnLeavesItInOnePlace)
{
    Container first(0u);
    Container second(0u);
    Container third(0u);
    auto plugin = makePlugin<RendererPlugin>();
    Recorder recorder;
    bool isMoving = false;
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (!std::exchange(isMoving, true) && dynamic_cast<ObservableDestructionEvent const *>(&event) == nullptr) {
            third.add(plugin.get());
            isMoving = false;
        }
    });
    auto const isOnlyIn = [&](Container & container) {
        return first.HasPlugin(plugin.get()) + second.HasPlugin(plugin.get()) + third.HasPlugin(plugin.get()) == 1 &&
               container.HasPlugin(plugin.get()) && plugin->GetContainer() == &container && plugin->IsInitialized();
    };
    first.add(plugin.get());
    first.addObserver(&recorder);
    second.add(plugin.get()); // which first hears of
    EXPECT_TRUE(isOnlyIn(second));

    plugin->addObserver(&recorder);
    second.remove(plugin.get()); // which the plug-in hears of
    EXPECT_TRUE(isOnlyIn(third));

    first.removeObserver(&recorder);
    first.add(plugin.get());
    first.addObserver(&recorder);
    EXPECT_TRUE(third.HasPlugin(plugin.get()));
    third.remove(plugin.get());
    first.add(plugin.get());
    plugin.reset();
    EXPECT_TRUE(PluginContainerIterator(third).IsAtEnd());
}

TEST(PluginContainerObserver, ThatPutsAPluginWhereItGoesOrBackLeavesItThereOnce)
{
    Container first(0u);
    Container second(0u);
    std::vector<EditorPlugin *> const editors{new EditorPlugin, new EditorPlugin};
    bool isActive = true;
    Recorder recorder;
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) {
        for (EditorPlugin * const editor : editors) {
            if (isActive && !second.HasPlugin(editor)) {
                isActive = false;
                second.add(editor);
            }
        }
    });
    first.add(editors[0]);
    first.addObserver(&recorder);
    second.add(editors[0]);
    second.add(editors[1]);
    EXPECT_EQ(editorsOf(second).size(), 3u) << "the first was added twice";
    isActive = true;
    second.addObserver(&recorder);
    second.clearPlugins(); // deletes each once
    EXPECT_TRUE(PluginContainerIterator(second).IsAtEnd());
}

TEST(ContainerEditors, AreListedInTheOrderOfAddition)
{
    Container container(0u);
    auto first = makePlugin<EditorPlugin>();
    auto const second = makePlugin<EditorPlugin>();
    auto const other = makePlugin<RendererPlugin>();
    container.add(static_cast<Plugin *>(second.get()));
    container.add(static_cast<Plugin *>(other.get()));
    container.add(first.get());
    container.add(second.get());
    container.add(static_cast<EditorPlugin *>(nullptr));
    EXPECT_EQ(editorsOf(container), (std::vector<EditorPlugin *>{second.get(), first.get(), second.get()}));
    EXPECT_TRUE(first->IsInitialized());

    container.remove(static_cast<Plugin *>(second.get()));
    EXPECT_EQ(editorsOf(container), (std::vector<EditorPlugin *>{first.get()}));
    EXPECT_FALSE(second->IsInitialized());
    first.reset();
    EXPECT_TRUE(editorsOf(container).empty());
}
