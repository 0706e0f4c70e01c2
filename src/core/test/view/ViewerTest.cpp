#include "math/Color.h"
#include "math/Vector.h"
#include "object/Tesseralis.h"
#include "plugin/EditorPlugin.h"
#include "support/Recorder.h"
#include "support/ViewDoubles.h"
#include "value/Archive.h"
#include "view/Viewport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace tesseralis;
using namespace tesseralis::test;

namespace {
std::string nameOf(Plugin const * plugin)
{
    return plugin != nullptr ? plugin->GetObjectName() : "none";
}

template <class Iterator>
std::string stack(Viewer & viewer)
{
    std::string names;
    for (Iterator i(viewer); !i.IsAtEnd(); ++i) {
        names += i->GetObjectName() + " ";
    }
    return names;
}
auto const compositors = stack<ViewerCompositorIterator>;
auto const interactors = stack<ViewerInteractorIterator>;
auto const renderers = stack<ViewerRendererIterator>;

std::string group(Viewer & viewer, Plugin * plugin)
{
    std::set<std::string> names;
    for (Plugin * const member : viewer.GetGroup(plugin)) {
        names.insert(member->GetObjectName());
    }
    std::string text;
    for (std::string const & name : names) {
        text += name + " ";
    }
    return text;
}

class ViewerTest : public testing::Test
{
protected:
    template <class P>
    P * add(std::string const & name, bool enabled = true)
    {
        auto * const plugin = new P(name, log, enabled);
        viewer->add(plugin);
        return plugin;
    }
    RendererDouble * renderer(std::string const & name, bool enabled = true)
    {
        return add<RendererDouble>(name, enabled);
    }
    CompositorDouble * compositor(std::string const & name, bool enabled = true)
    {
        return add<CompositorDouble>(name, enabled);
    }
    InteractorDouble * interactor(std::string const & name, bool enabled = true)
    {
        return add<InteractorDouble>(name, enabled);
    }
    static void enable(Plugin * plugin, bool enabled = true) { plugin->GetProperty("Enabled") = enabled; }
    static bool IsEnabled(Plugin * plugin) { return plugin->GetProperty("Enabled"); }

    Log log; // outlives the viewer
    std::unique_ptr<ViewerDouble> viewer = std::make_unique<ViewerDouble>(log);
};
} // namespace

TEST_F(ViewerTest, InitialisesPluginsInItsContextAndIntroducesThemToCompositors)
{
    EXPECT_EQ(viewer->GetWidth() * viewer->GetHeight(), 1u);
    compositor("c");
    EXPECT_EQ(log.take(), "( c.initialize c.reshape1x1 ) repaint ");
    viewer->reshape(4, 3);
    log.take();
    auto * const r = renderer("r");
    EXPECT_EQ(log.take(), "( r.initialize c.add:r r.reshape4x3 ) repaint ");
    interactor("i", false);
    EXPECT_EQ(log.take(), "( i.initialize c.add:i i.reshape4x3 ) ");
    auto * const d = compositor("d");
    EXPECT_EQ(log.take(), "( d.initialize d.reshape4x3 d.add:i d.add:r ) repaint ");

    r->suspend();
    EXPECT_EQ(log.take(), "( ) r.uninitialize ");
    r->resume();
    EXPECT_EQ(log.take(), "r.initialize ( r.reshape4x3 ) repaint ");
    d->suspend();
    log.take();
    d->resume();
    EXPECT_EQ(log.take(), "d.initialize ( d.reshape4x3 d.add:i d.add:r ) repaint ");

    viewer->remove(d);
    EXPECT_EQ(log.take(), "( d.uninitialize ) ");
    delete d;
    log.take();
    delete r;
    EXPECT_EQ(log.take(), "r.end ( c.remove:r ) ");
    EXPECT_EQ(renderers(*viewer) + interactors(*viewer) + compositors(*viewer), "i c ");

    viewer->reshape(2, 2);
    EXPECT_EQ(log.take(), "( i.reshape2x2 c.reshape2x2 ) ");
    viewer->GetProperty("Background Color") = Color(1, 2, 3, 4);
    EXPECT_EQ(log.take(), "repaint ");
    viewer.reset();
    EXPECT_EQ(log.take().find("repaint"), std::string::npos);
}

TEST_F(ViewerTest, SendsWhatItsPluginsAskForToTheHost)
{
    auto * const r = renderer("r");
    auto * const c = compositor("c", false);
    log.take();
    r->update();
    c->update();
    c->requestCursorShape(CursorShape::Hand);
    r->restoreCursorShape();
    EXPECT_EQ(log.take(), "repaint shape2 restore ");
    viewer->remove(r);
    log.take();
    r->update();
    r->requestCursorShape(CursorShape::Wait);
    EXPECT_EQ(log.take(), "");
    delete r;
    log.take();

    viewer->add(new EditorPlugin(0u));
    EXPECT_FALSE(ContainerEditorIterator(*viewer).IsAtEnd());
    enable(&*ContainerEditorIterator(*viewer));
    viewer->update(&*ContainerEditorIterator(*viewer), 3);
    EXPECT_EQ(log.take(), "repaint ");
}

TEST_F(ViewerTest, ReadsEnabledWhateverBecomesOfTheProperty)
{
    auto * const r = renderer("r");
    EXPECT_TRUE(r->IsEnabled());
    r->addProperty("Enabled", Variant("false"));
    EXPECT_FALSE(r->IsEnabled());
    r->addProperty("Enabled", Variant(1));
    EXPECT_TRUE(r->IsEnabled());
    r->renameProperty("Disabled", "Enabled");
    EXPECT_FALSE(r->IsEnabled());
    r->GetProperty("Enabled") = Variant(Vector());
    EXPECT_FALSE(r->IsEnabled());
    r->clearProperties();
    EXPECT_FALSE(r->IsEnabled());
    viewer->update(r, 3);
    viewer->display();
}

TEST_F(ViewerTest, KnowsTheNeighboursInTheWholeOrder)
{
    auto const neighbours = [&](Plugin * plugin) {
        return nameOf(viewer->GetPrevious(plugin)) + "<" + nameOf(viewer->GetNext(plugin));
    };
    Plugin * const r1 = renderer("r1");
    Plugin * const r2 = renderer("r2");
    Plugin * const c1 = compositor("c1");
    EXPECT_EQ(neighbours(c1), "none<none") << "an empty stack isn't skipped";
    EXPECT_EQ(neighbours(r1), "none<r2");
    auto * const i1 = interactor("i1");
    Plugin * const c2 = compositor("c2");
    EXPECT_EQ(neighbours(c1), "none<c2");
    EXPECT_EQ(neighbours(c2), "c1<i1");
    EXPECT_EQ(neighbours(i1), "c2<r1");
    EXPECT_EQ(neighbours(r1), "i1<r2");
    EXPECT_EQ(neighbours(r2), "r1<none");
    EXPECT_EQ(viewer->GetPrevious(i1), nullptr) << "in its own stack";
    RendererDouble stranger("stranger", log);
    EXPECT_EQ(neighbours(&stranger), "none<none");
    EXPECT_EQ(neighbours(nullptr), "none<none");
}

TEST_F(ViewerTest, FollowsTheRegistryAfterAMove)
{
    ViewerDouble other(log, "other");
    auto & registry = Tesseralis::Get();
    auto * const a = renderer("a");
    auto * const x = new RendererDouble("x", log);
    other.add(x);
    auto * const b = renderer("b");
    auto * const front = new RendererDouble("front", log);
    viewer->insert(front, a);
    viewer->insert(static_cast<Plugin *>(front), nullptr);
    auto * const back = new RendererDouble("back", log);
    viewer->insert(static_cast<Plugin *>(back), viewer->GetPrevious(static_cast<Plugin *>(front)));
    auto * const i = new InteractorDouble("i", log);
    viewer->insert(static_cast<Plugin *>(i), a);
    EXPECT_FALSE(viewer->HasPlugin(i)) << "there is no such place";
    viewer->insert(i, nullptr);
    auto * const bare = new RendererPlugin(0u);
    viewer->add(bare);
    EXPECT_EQ(renderers(*viewer), "front a b back  ");

    log.take();
    registry.moveObjectAfter(x, b);
    registry.moveObjectBefore(i, a);
    EXPECT_EQ(log.take(), "") << "nothing of the viewer has another place in its stack";
    EXPECT_EQ(renderers(*viewer), "front a b back  ");
    registry.moveObjectBefore(b, a);
    EXPECT_EQ(renderers(*viewer), "b a front back  ") << "those that aren't registered stay";
    EXPECT_EQ(log.take(), "repaint ");
    registry.moveObjectAfter(b, x);
    EXPECT_EQ(log.take(), "repaint ");
    registry.moveObjectBefore(b, x);
    EXPECT_EQ(log.take(), "") << "x is in another viewer";
    EXPECT_EQ(renderers(*viewer), "a b front back  ");
    EXPECT_EQ(renderers(other), "x ");

    viewer->add(b);
    EXPECT_EQ(renderers(*viewer), "a b front back  b ") << "twice";
    other.add(static_cast<Plugin *>(b));
    EXPECT_EQ(renderers(*viewer) + "|" + renderers(other), "a front back  |x b ");

    registry.beginModification();
    registry.moveObjectBefore(front, a);
    delete front; // before anyone hears of its move
    registry.endModification();
    EXPECT_EQ(renderers(*viewer), "a back  ");
}

TEST_F(ViewerTest, KeepsOneMemberOfAGroupEnabled)
{
    std::list<RendererPlugin *> added;
    for (char const * name : {"a", "b", "c"}) {
        added.push_back(new RendererDouble(name, log, false));
    }
    viewer->add(added);
    Plugin * const a = added.front();
    Plugin * const b = *std::next(added.begin());
    Plugin * const c = added.back();
    EXPECT_EQ(group(*viewer, b), "a b c ");
    log.take();
    enable(a);
    EXPECT_EQ(log.take(), "repaint repaint ( a.reshape1x1 ) repaint ");
    enable(b);
    EXPECT_FALSE(IsEnabled(a) || !IsEnabled(b) || IsEnabled(c));

    Plugin * const d = renderer("d");
    Plugin * const e = interactor("e");
    viewer->group(c, d);
    EXPECT_EQ(group(*viewer, a), "a b c d ");
    enable(d);
    enable(a);
    EXPECT_FALSE(IsEnabled(b) || IsEnabled(d));
    enable(b);
    viewer->group({c, e});
    EXPECT_EQ(group(*viewer, a) + group(*viewer, c), "a b d c e ");
    enable(c);
    EXPECT_FALSE(IsEnabled(e));
    EXPECT_TRUE(IsEnabled(b));
    viewer->ungroup(c);
    EXPECT_EQ(group(*viewer, e), "e ");
    enable(e);
    EXPECT_TRUE(IsEnabled(c));

    viewer->remove(d);
    delete a;
    enable(d);
    EXPECT_TRUE(IsEnabled(b)) << "a member that has left";
    EXPECT_EQ(group(*viewer, b), "b ");
    EXPECT_EQ(group(*viewer, d), "");
    delete d;

    c->SetPropertyLink("Enabled", PropertyContainerLink(e, "Enabled"));
    viewer->group(b, c);
    enable(b);
    EXPECT_FALSE(IsEnabled(c) || IsEnabled(e));
    enable(e);
    EXPECT_FALSE(IsEnabled(b)) << "a member that a link enables";
}

TEST_F(ViewerTest, ForgetsPluginsThatDieInGroupsOfOthers)
{
    auto * const a = renderer("a", false);
    auto * const b = renderer("b", false);
    auto * const stranger = new RendererDouble("stranger", log);
    viewer->group({a, b, stranger, nullptr});
    viewer->SetTranslator(stranger, Translator());
    delete stranger;
    EXPECT_EQ(group(*viewer, a), "a b ");

    // Who hears that a member is disabled ends others.
    Recorder recorder(*a);
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) {
        if (!IsEnabled(a) && viewer->HasPlugin(b)) {
            recorder.SetReaction({});
            delete b;
        }
    });
    auto * const c = renderer("c", false);
    viewer->group({a, b, c});
    enable(c);
    EXPECT_EQ(renderers(*viewer), "a c ");
}

TEST_F(ViewerTest, DisplaysTheEnabledAndCollectsUpdatesForTheOthers)
{
    auto * const r = renderer("r");
    auto * const i = interactor("i");
    auto * const off = renderer("off", false);
    auto * const c = compositor("c");
    auto * const later = compositor("later", false);
    log.take();
    viewer->display();
    EXPECT_EQ(log.take(), "( c.display(i3,r3,3) swap ) ");
    viewer->display();
    EXPECT_EQ(log.take(), "( c.display(i,r,0) swap ) ");
    r->update(4);
    r->update(8);
    off->update(1);
    EXPECT_EQ(log.take(), "repaint repaint ");
    viewer->display();
    EXPECT_EQ(log.take(), "( c.display(i,r12,2) swap ) ");
    enable(later);
    enable(c, false);
    enable(i, false);
    log.take();
    viewer->display();
    EXPECT_EQ(log.take(), "( later.display(r15,3) swap ) ");

    enable(c);
    off->update(2);
    log.take();
    int calls = 0;
    c->onDisplay = [&] {
        r->update(16 << calls);
        return ++calls == 3;
    };
    viewer->display();
    EXPECT_EQ(log.take(), "( c.display(r,1) repaint c.display(r16,2) repaint c.display(r48,2) repaint "
                          "later.display(r112,2) swap ) ");
    enable(i);
    log.take();
    viewer->idle();
    EXPECT_EQ(log.take(), "c.idle later.idle i.idle r.idle ");
}

TEST_F(ViewerTest, DisplaysOnWhenPluginsGoMeanwhile)
{
    auto * const r = renderer("r");
    renderer("s");
    auto * const c = compositor("c");
    auto * const d = compositor("d");
    compositor("e");
    c->onDisplay = [&] {
        c->onDisplay = {};
        delete r;
        return false;
    };
    d->onDisplay = [&] {
        delete d;
        return false;
    };
    log.take();
    viewer->display();
    EXPECT_EQ(log.take(), "( c.display(r3,s3,2) r.end ( c.remove:r d.remove:r e.remove:r ) c.display(s3,1) "
                          "d.display(s3,1) d.end ( ) e.display(s3,1) swap ) ");
}

TEST_F(ViewerTest, OffersInputFromTheBackUntilItIsConsumed)
{
    auto * const r1 = renderer("r1");
    renderer("r2");
    renderer("off", false);
    auto * const i = interactor("i");
    compositor("c");
    Translator translator;
    translator.addCursorTranslation("mouse0.cursor", 5, true);
    viewer->SetTranslator(i, translator);
    viewer->SetTranslator(r1, translator);
    translator.clearTranslations();
    log.take();
    viewer->cursor("mouse0.cursor", Vector(1, 2, 3), 0.5f, 0.25f);
    EXPECT_EQ(log.take(), "c.cursor0 i.cursor5 r2.cursor0 r1.cursor5 ") << "i doesn't handle what it would consume";
    bool handled = true;
    i->onInput = [&](Controller const & controller) {
        EXPECT_EQ(controller.GetActiveCursorPosition(), Vector(1, 2, 3));
        EXPECT_EQ(controller.GetActiveCursorHorizontalTilt(), 0.5f);
        EXPECT_EQ(controller.GetActiveCursorVerticalTilt(), 0.25f);
        return handled;
    };
    viewer->cursor("mouse0.cursor", Vector(1, 2, 3), 0.5f, 0.25f);
    EXPECT_EQ(log.take(), "c.cursor0 i.cursor5 ");
    i->onInput = [](Controller const & controller) {
        EXPECT_EQ(controller.GetCursorPosition(5), Vector(1, 2, 3)) << "what was known before";
        EXPECT_EQ(controller.GetActiveButtonPressure(), 0.5f);
        return true;
    };
    viewer->button("mouse0.rightbutton", 0.5f);
    EXPECT_EQ(log.take(), "c.button1 i.button1 r2.button1 r1.button1 ") << "handled, but not to be consumed";
    for (bool const state : {true, false}) {
        i->onInput = [=](Controller const & controller) {
            EXPECT_EQ(controller.GetButtonPressure(0), state ? 1.0f : 0.0f);
            return true;
        };
        viewer->button("mouse0.leftbutton", state);
    }
    log.take();
    viewer->button("pen0.tip", true);
    viewer->SetTranslator(r1, translator);
    viewer->cursor("mouse0.cursor", Vector(), 0.0f, 0.0f);
    EXPECT_EQ(log.take(), "c.cursor0 i.cursor5 ");
    EXPECT_TRUE(TranslatorCursorIterator(viewer->GetTranslator(r1)).IsAtEnd());
}

TEST_F(ViewerTest, OffersInputOnWhenPluginsGoMeanwhile)
{
    auto * const back = renderer("r1");
    auto * const own = renderer("r2");
    auto * const moving = renderer("r3");
    viewer->group({back, own});
    viewer->SetTranslator(own, Translator());
    own->onInput = [&](Controller const &) {
        delete own;
        return true;
    };
    moving->onInput = [&](Controller const &) {
        moving->onInput = {};
        Tesseralis::Get().moveObjectBefore(moving, back);
        viewer->button("mouse0.leftbutton", 0.0f);
        interactor("late");
        return true;
    };
    log.take();
    viewer->button("mouse0.leftbutton", true);
    EXPECT_EQ(log.take(), "r3.button0 repaint r2.button0 r2.end ( ) r1.button0 r3.button0 ( late.initialize "
                          "late.reshape1x1 ) repaint r1.button0 ");
}

namespace {
// What a document with a viewer brings back.
std::string readScene()
{
    auto & viewer = dynamic_cast<Viewer &>(*Tesseralis::Get().GetObject("viewer"));
    auto & a = dynamic_cast<Plugin &>(*Tesseralis::Get().GetObject("a"));
    auto const named = [](Object const * object) { return object != nullptr ? object->GetObjectName() : "none"; };
    return named(viewer.GetViewport()) + (viewer.IsInitialized() ? "! " : " ") + renderers(viewer) +
           compositors(viewer) + group(viewer, &a) +
           std::to_string(TranslatorCursorIterator(viewer.GetTranslator(&a)).GetIndex());
}
} // namespace

TEST(ViewerArchive, BringsBackTheSceneFromElementsInAnyOrder)
{
    registerObjectTypes();
    auto & registry = Tesseralis::Get();
    auto * const viewport = new Viewport("viewport", ObjectAttribute::All);
    auto * const viewer = new Viewer("viewer", ObjectAttribute::All);
    viewport->add(viewer);
    auto * const a = new RendererPlugin("a", ObjectAttribute::All);
    auto * const b = new RendererPlugin("b", ObjectAttribute::All);
    auto * const c = new CompositorPlugin("c", ObjectAttribute::All);
    for (Plugin * const plugin : std::initializer_list<Plugin *>{a, b, c}) {
        viewer->add(plugin);
    }
    Translator translator;
    translator.addCursorTranslation("mouse0.cursor", 9, false);
    viewer->SetTranslator(a, translator);
    viewer->group({a, b, c});
    viewer->group({b});
    a->GetProperty("Enabled") = true;
    b->GetProperty("Enabled") = true;

    std::vector<Object *> objects{viewport, viewer, a, b, c};
    std::sort(objects.begin(), objects.end());
    std::vector<std::unique_ptr<Archive>> archives;
    std::vector<std::string> scenes;
    do {
        for (std::size_t i = 1; i < objects.size(); ++i) {
            registry.moveObjectAfter(objects[i], objects[i - 1]);
        }
        scenes.push_back(readScene());
        archives.push_back(std::make_unique<Archive>());
        archives.back()->store();
    } while (std::next_permutation(objects.begin(), objects.end()));

    for (std::size_t i = 0; i < archives.size(); ++i) {
        registry.clearObjects();
        archives[i]->retrieve(0);
        EXPECT_EQ(readScene(), scenes[i]);
        EXPECT_TRUE(scenes[i] == "viewport! a b c a c 9" || scenes[i] == "viewport! b a c a c 9") << scenes[i];
    }
    registry.clearObjects();
}

TEST(ViewerArchive, LeavesOutWhatItDoesNotKnow)
{
    registerObjectTypes();
    Archive archive;
    ArchiveElement root = ArchiveElement(archive).store("tesseralis");
    ArchiveElement element = root.store("viewer");
    element.SetAttribute("name", "viewer");
    element.SetAttribute("viewport", "nowhere");
    element.store("translator").SetAttribute("plugin", "nobody");
    for (char const * name : {"nobody", "viewer", ""}) {
        ArchiveElement group = element.store("group");
        group.store("item").SetAttribute("plugin", name);
    }
    Viewport viewport(0u);
    auto * const viewer = new Viewer("viewer", ObjectAttribute::All);
    viewport.add(viewer);
    archive.retrieve(0);
    EXPECT_EQ(viewer->GetViewport(), nullptr);
    Archive stored;
    stored.store();
    ArchiveElement read = ArchiveElement(stored).retrieve("viewer");
    EXPECT_FALSE(read.IsRetrievable("translator") || read.IsRetrievable("group"));
    EXPECT_EQ(read.GetAttribute("viewport"), "");
    Tesseralis::Get().clearObjects();
}
