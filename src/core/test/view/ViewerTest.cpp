#include "math/Color.h"
#include "math/Vector.h"
#include "plugin/EditorPlugin.h"
#include "support/ViewDoubles.h"
#include "value/Archive.h"
#include "view/Viewport.h"

#include <numeric>

namespace {
std::string renderers(Viewer & viewer)
{
    std::string names;
    for (ViewerRendererIterator i(viewer); !i.IsAtEnd(); ++i) {
        names += i->GetObjectName() + " ";
    }
    return names;
}

std::string groupOf(Viewer const & viewer, Plugin * plugin)
{
    std::set<std::string> names;
    for (Plugin * const member : viewer.GetGroup(plugin)) {
        names.insert(member->GetObjectName() + " ");
    }
    return std::accumulate(names.begin(), names.end(), std::string());
}

void enable(Plugin * plugin, bool enabled = true)
{
    plugin->GetProperty("Enabled") = enabled;
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
    auto * renderer(std::string const & name, bool enabled = true) { return add<RendererDouble>(name, enabled); }
    auto * compositor(std::string const & name, bool enabled = true) { return add<CompositorDouble>(name, enabled); }
    auto * interactor(std::string const & name, bool enabled = true) { return add<InteractorDouble>(name, enabled); }
    /// What is noted while it is done.
    template <class Call>
    std::string noted(Call const & call)
    {
        log.take();
        call();
        return log.take();
    }

    Log log; // outlives the viewer
    std::unique_ptr<ViewerDouble> viewer = std::make_unique<ViewerDouble>(log);
};
} // namespace

TEST_F(ViewerTest, InitialisesPluginsInItsContextAndIntroducesThemToCompositors)
{
    auto * const c = compositor("c");
    EXPECT_EQ(log.take(), "( c.initialize c.reshape11 ) repaint ");
    EXPECT_EQ(noted([&] { viewer->reshape(4, 3); }), "( c.reshape43 ) ");
    auto * const r = renderer("r");
    EXPECT_EQ(log.take(), "( r.initialize c.add:r r.reshape43 ) repaint ");
    EXPECT_EQ(noted([&] { interactor("i", false); }), "( i.initialize c.add:i i.reshape43 ) ");
    auto * const d = compositor("d");
    EXPECT_EQ(log.take(), "( d.initialize d.reshape43 d.add:i d.add:r ) repaint ");
    EXPECT_EQ(noted([&] { r->suspend(), r->resume(); }), "( ) r.uninitialize r.initialize ( r.reshape43 ) repaint ");
    EXPECT_EQ(noted([&] { d->suspend(), d->resume(); }).substr(19),
              "d.initialize ( d.reshape43 d.add:i d.add:r ) repaint ");
    EXPECT_EQ(noted([&] { viewer->remove(d); }), "( d.uninitialize ) ");
    delete d;
    auto const ask = [&] {
        r->update(), c->update(), c->requestCursorShape(CursorShape::Hand), r->restoreCursorShape();
    };
    EXPECT_EQ(noted(ask), "repaint repaint hand restore ");
    EXPECT_EQ(noted([&] { viewer->remove(r); }), "( r.uninitialize c.remove:r ) ");
    EXPECT_EQ(noted(ask), "repaint hand ") << "r is in no viewer";
    delete r;
    EXPECT_EQ(noted([&] { viewer->GetProperty("Background Color") = Color(1, 2, 3, 4); }), "repaint ");
    EXPECT_EQ(noted([&] { viewer.reset(); }).find("repaint"), std::string::npos);
}

TEST_F(ViewerTest, ReadsEnabledWhateverBecomesOfTheProperty)
{
    auto * const r = renderer("r");
    for (auto const & [value, calls] : {std::pair(Variant(true), "r.idle "), std::pair(Variant("false"), ""),
                                        std::pair(Variant(1), "r.idle "), std::pair(Variant(Vector()), "")}) {
        r->addProperty("Enabled", value);
        EXPECT_EQ(noted([&] { viewer->idle(); }), calls) << value;
    }
    r->GetProperty("Enabled") = Variant(true);
    EXPECT_TRUE(r->IsEnabled());
    r->renameProperty("Disabled", "Enabled");
    EXPECT_FALSE(r->IsEnabled());
}

TEST_F(ViewerTest, KnowsTheNeighboursInTheWholeOrder)
{
    auto const neighbours = [&](Plugin * plugin) {
        auto const name = [](Plugin const * other) { return other != nullptr ? other->GetObjectName() : "none"; };
        return name(viewer->GetPrevious(plugin)) + "<" + name(viewer->GetNext(plugin));
    };
    Plugin * const r1 = renderer("r1");
    Plugin * const r2 = renderer("r2");
    Plugin * const c1 = compositor("c1");
    EXPECT_EQ(neighbours(c1) + neighbours(r1), "none<nonenone<r2") << "an empty stack isn't skipped";
    auto * const i1 = interactor("i1");
    EXPECT_EQ(neighbours(c1) + neighbours(i1), "none<i1c1<r1");
    EXPECT_EQ(neighbours(r1) + neighbours(r2), "i1<r2r1<none");
    EXPECT_EQ(viewer->GetPrevious(i1), nullptr) << "in its own stack";
    RendererDouble stranger("stranger", log);
    EXPECT_EQ(neighbours(&stranger) + neighbours(nullptr), "none<nonenone<none");
}

TEST_F(ViewerTest, FollowsTheRegistryAfterAMove)
{
    Tesseralis & registry = Tesseralis::Get();
    Viewer other(0u);
    auto * const a = renderer("a");
    auto * const x = new RendererDouble("x", log);
    other.add(x);
    auto * const b = renderer("b");
    auto * const front = new RendererDouble("front", log);
    viewer->insert(front, a);
    viewer->insert(static_cast<Plugin *>(front), nullptr); // is here already
    auto * const i = new InteractorDouble("i", log);
    viewer->insert(static_cast<Plugin *>(i), a); // there is no such place
    EXPECT_FALSE(viewer->HasPlugin(i));
    viewer->insert(i, nullptr);
    viewer->add(new RendererPlugin(0u));
    auto const move = [&](Object * object, Object * behind) {
        std::string const calls = noted([&] { registry.moveObjectAfter(object, behind); });
        return calls + renderers(*viewer);
    };
    EXPECT_EQ(move(x, b), "front a b  ");
    EXPECT_EQ(move(i, a), "front a b  ") << "the only interactor";
    EXPECT_EQ(move(front, b), "repaint a b front  ") << "one that isn't registered stays";
    EXPECT_EQ(move(front, x), "a b front  ") << "x is in another viewer";

    viewer->add(b);
    EXPECT_EQ(renderers(*viewer), "a b front  b ");
    other.add(static_cast<Plugin *>(b));
    EXPECT_EQ(renderers(*viewer) + renderers(other), "a front  x b ");
    Recorder recorder(other);
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) { registry.moveObjectBefore(front, a); });
    viewer->add(b); // which isn't here yet when the others are moved
    EXPECT_EQ(renderers(*viewer), "front a  b ");
    delete b;
    registry.beginModification();
    registry.moveObjectBefore(front, a);
    delete front; // before anyone hears of its move
    registry.endModification();
    EXPECT_EQ(renderers(*viewer), "a  ");
}

TEST_F(ViewerTest, KeepsOneMemberOfAGroupEnabled)
{
    auto * const a = new RendererDouble("a", log, false);
    auto * const b = new RendererDouble("b", log, false);
    auto * const c = new RendererDouble("c", log, false);
    viewer->add(std::list<RendererPlugin *>{a, b, c});
    auto * const d = renderer("d", false);
    auto * const e = interactor("e", false);
    // Those that are enabled after each of some has been.
    auto const enabled = [&](std::initializer_list<Plugin *> plugins) {
        std::string names;
        for (Plugin * const plugin : plugins) {
            enable(plugin);
            for (auto * const each : std::initializer_list<Plugin *>{a, b, c, d, e}) {
                names += each->GetProperty("Enabled") == Variant(true) ? each->GetObjectName() : "";
            }
            names += " ";
        }
        return names;
    };
    EXPECT_EQ(noted([&] { enable(a); }), "repaint repaint ( a.reshape11 ) repaint ");
    EXPECT_EQ(enabled({b, d, e}), "b bd bde ");
    viewer->group(c, d);
    EXPECT_EQ(groupOf(*viewer, a), "a b c d ");
    EXPECT_EQ(enabled({a, c}), "ae ce ");
    viewer->group({c, e});
    EXPECT_EQ(groupOf(*viewer, a) + groupOf(*viewer, c), "a b d c e ");
    EXPECT_EQ(enabled({e, b}), "e be ");
    viewer->ungroup(c);
    viewer->remove(d);
    EXPECT_EQ(groupOf(*viewer, b) + groupOf(*viewer, c) + groupOf(*viewer, d), "a b c ");
    EXPECT_EQ(enabled({c, d}), "bce bcde ");
    delete d;

    c->SetPropertyLink("Enabled", PropertyContainerLink(e, "Enabled"));
    viewer->group(b, c);
    enable(b);
    enable(e);
    EXPECT_FALSE(b->IsEnabled()) << "a link enables c";
}

TEST_F(ViewerTest, CollectsUpdatesUntilACompositorIsDone)
{
    auto * const r = renderer("r");
    auto * const i = interactor("i");
    auto * const off = renderer("off", false);
    auto * const c = compositor("c");
    auto * const later = compositor("later", false);
    auto const frame = [&] { return noted([&] { viewer->display(); }); };
    EXPECT_EQ(frame(), "( c.display(i3,r3,3) swap ) ");
    EXPECT_EQ(noted([&] { r->update(4), r->update(8), off->update(1); }), "repaint repaint ");
    EXPECT_EQ(frame(), "( c.display(i,r12,2) swap ) ");
    enable(later);
    enable(c, false);
    enable(i, false);
    EXPECT_EQ(frame(), "( later.display(r15,3) swap ) ");
    enable(c);
    off->update(2);
    int calls = 0;
    c->reaction = [&] { return r->update(16u << calls), ++calls == 3; };
    EXPECT_EQ(frame(), "( c.display(r,1) repaint c.display(r16,2) repaint c.display(r48,2) repaint "
                       "later.display(r112,2) swap ) ");
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
    auto const point = [&] { viewer->cursor("mouse0.cursor", Vector(1, 2, 3), 0.5f, 0.25f); };
    auto const press = [&] { viewer->button("mouse0.rightbutton", 0.5f), viewer->button("pen0.tip", true); };
    EXPECT_EQ(noted(point), "c.cursor0 i.cursor5 r2.cursor0 r1.cursor5 ") << "i doesn't handle what it would consume";
    i->reaction = [] { return true; };
    EXPECT_EQ(noted(point), "c.cursor0 i.cursor5 ");
    EXPECT_EQ(noted(press), "c.button1 i.button1 r2.button1 r1.button1 ") << "handled, but not to be consumed";
    translator.clearTranslations();
    viewer->SetTranslator(i, translator);
    EXPECT_EQ(noted(press), "c.button1 r2.button1 r1.button1 ");
    EXPECT_TRUE(TranslatorCursorIterator(viewer->GetTranslator(i)).IsAtEnd());

    auto * const last = renderer("last");
    point(), press();
    viewer->button("mouse0.leftbutton", true);
    EXPECT_EQ(last->seen.GetCursorPosition(0), Vector(1, 2, 3)) << "what was known before";
    EXPECT_EQ(last->seen.GetCursorHorizontalTilt(0) - last->seen.GetCursorVerticalTilt(0), 0.25f);
    EXPECT_EQ(last->seen.GetButtonPressure(0) + last->seen.GetButtonPressure(1), 1.5f);
}

TEST_F(ViewerTest, GoesOnWhenPluginsEndThemselvesAndOthers)
{
    auto * const r = renderer("r");
    auto * const s = renderer("s");
    auto * const c = compositor("c");
    auto * const d = compositor("d");
    auto * const stranger = new RendererDouble("stranger", log);
    viewer->group({r, s, c, stranger, nullptr});
    viewer->SetTranslator(stranger, Translator());
    viewer->SetTranslator(r, Translator());
    delete stranger;
    EXPECT_EQ(groupOf(*viewer, s), "c r s ");
    c->reaction = [&] { return c->reaction = {}, delete r, false; };
    d->reaction = [&] { return delete d, false; };
    EXPECT_EQ(noted([&] { viewer->display(); }), "( c.display(r3,s3,2) r.end ( c.remove:r d.remove:r ) c.display(s3,1) "
                                                 "d.display(s3,1) d.end ( ) swap ) ");

    auto * const t = renderer("t");
    auto * const u = renderer("u");
    viewer->group({s, t});
    t->reaction = [&] { return delete t, true; };
    u->reaction = [&] {
        u->reaction = {};
        Tesseralis::Get().moveObjectBefore(u, s);
        return viewer->button("mouse0.leftbutton", 0.0f), true;
    };
    EXPECT_EQ(noted([&] { viewer->button("mouse0.leftbutton", true); }),
              "c.button0 u.button0 repaint c.button0 t.button0 t.end ( c.remove:t ) s.button0 u.button0 s.button0 ");

    auto const addBrief = [&](auto * plugin) {
        plugin->reaction = [=] { return delete plugin, true; };
        viewer->add(plugin);
    };
    EXPECT_EQ(noted([&] { addBrief(new RendererDouble("v", log)); }),
              "( v.initialize c.add:v v.reshape11 v.end ( c.remove:v ) ) ");
    EXPECT_EQ(noted([&] { addBrief(new CompositorDouble("w", log)); }), "( w.initialize w.reshape11 w.end ( ) ) ");

    Recorder recorder(*s);
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) { recorder.SetReaction({}), delete u; });
    viewer->group({c, s, u});
    enable(c);
    EXPECT_EQ(renderers(*viewer), "s ");
}

TEST(ViewerArchive, BringsBackTheSceneFromElementsInAnyOrder)
{
    registerObjectTypes();
    Tesseralis & registry = Tesseralis::Get();
    auto * const viewport = new Viewport("viewport", ObjectAttribute::All);
    auto * const viewer = new Viewer("viewer", ObjectAttribute::All);
    auto * const a = new RendererPlugin("a", ObjectAttribute::All);
    auto * const b = new RendererPlugin("b", ObjectAttribute::All);
    auto * const c = new CompositorPlugin("c", ObjectAttribute::All);
    viewport->add(viewer);
    viewer->add(a), viewer->add(b), viewer->add(c);
    Translator translator;
    translator.addCursorTranslation("mouse0.cursor", 9, false);
    viewer->SetTranslator(a, translator);
    viewer->group({a, c});
    viewer->group({b});
    enable(a), enable(b);
    auto const readScene = [&] {
        auto & read = dynamic_cast<Viewer &>(*registry.GetObject("viewer"));
        auto * const plugin = dynamic_cast<Plugin *>(registry.GetObject("a"));
        bool const isInViewport = read.GetViewport() == registry.GetObject("viewport") && read.IsInitialized();
        return (isInViewport ? "viewport " : "none ") + renderers(read) + groupOf(read, plugin) +
               std::to_string(TranslatorCursorIterator(read.GetTranslator(plugin)).GetIndex());
    };

    Texts names{"a", "b", "c", "viewer", "viewport"};
    do {
        for (std::size_t i = 1; i < names.size(); ++i) {
            registry.moveObjectAfter(registry.GetObject(names[i]), registry.GetObject(names[i - 1]));
        }
        std::string const scene = readScene();
        EXPECT_TRUE(scene == "viewport a b a c 9" || scene == "viewport b a a c 9") << scene;
        Archive archive;
        archive.store();
        registry.clearObjects();
        archive.retrieve(0);
        EXPECT_EQ(readScene(), scene);
    } while (std::next_permutation(names.begin(), names.end()));

    Archive archive; // with names of nothing that is there
    ArchiveElement root = ArchiveElement(archive).store("tesseralis");
    ArchiveElement element = root.store("viewer");
    element.SetAttribute("name", "viewer");
    element.SetAttribute("viewport", "a");
    root.store("renderer").SetAttribute("name", "a");
    EXPECT_FALSE(registry.GetObject("viewer")->IsRetrievable(element)) << "a comes first";
    element.store("translator").SetAttribute("plugin", "nobody");
    element.store("group").store("item").SetAttribute("plugin", "viewport");
    archive.retrieve(0);
    EXPECT_EQ(readScene().substr(0, 4), "none");
    registry.clearObjects();
}
