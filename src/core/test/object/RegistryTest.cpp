#include "plugin/Session.h"
#include "support/Testing.h"

namespace {
Texts namesInOrder()
{
    Texts names;
    for (TesseralisIterator i(Tesseralis::Get()); !i.IsAtEnd(); ++i) {
        names.push_back(i.GetName());
    }
    return names;
}

class Registry : public testing::Test
{
protected:
    Registry() { registry.registerObjectType<Session>(); }
    ~Registry() override
    {
        registry.clearObjects();
        registry.SetNamespace("");
    }

    Session * make(std::string const & name) { return new Session(name, ObjectAttribute::All); }

    Tesseralis & registry = Tesseralis::Get();
};
} // namespace

TEST_F(Registry, AgreesWithAPlainListAfterManyChanges)
{
    std::mt19937 random(20260101);
    std::vector<std::pair<std::string, Session *>> model;
    auto const isTaken = [&](std::string const & name) {
        return std::any_of(model.begin(), model.end(), [&](auto const & entry) { return entry.first == name; });
    };
    for (int step = 0; step < 4000; ++step) {
        std::string const wanted =
            std::string(1, "xyz"[random() % 3]) + (random() % 2 ? "" : std::to_string(random() % 15));
        std::size_t const action = random() % 10;
        if (model.empty() || action < 4) {
            std::string unique = wanted;
            for (int number = 1; isTaken(unique); ++number) {
                unique = wanted + std::to_string(number);
            }
            model.emplace_back(unique, make(wanted));
            continue;
        }
        std::size_t const first = random() % model.size();
        std::size_t const second = random() % model.size();
        if (action < 7) {
            action == 4 ? registry.destroyObject(model[first].first) : registry.destroyObject(model[first].second);
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(first));
        } else if (action == 7) {
            model[first].second->SetObjectName(wanted);
            model[first].first = isTaken(wanted) ? model[first].first : wanted;
        } else if (first != second) {
            auto const moved = model[first];
            auto const target = model[second];
            (action == 8) ? registry.moveObjectBefore(moved.second, target.second)
                          : registry.moveObjectAfter(moved.second, target.second);
            std::erase(model, moved);
            model.insert(std::find(model.begin(), model.end(), target) + (action == 8 ? 0 : 1), moved);
        }
        ASSERT_EQ(namesInOrder().size(), model.size());
    }
    TesseralisIterator i(registry);
    Object * previous = nullptr;
    for (auto const & [name, object] : model) {
        ASSERT_EQ(i.GetName(), name);
        ASSERT_EQ(i.GetObject(), object);
        ASSERT_EQ(registry.GetObject("session", name), object);
        ASSERT_EQ(object->GetObjectName(), name);
        ASSERT_EQ(registry.GetNextObject(previous), object);
        ASSERT_EQ(registry.GetPreviousObject(object), previous);
        ++i;
        previous = object;
    }
    EXPECT_TRUE(i.IsAtEnd());
    EXPECT_EQ(registry.GetNextObject(previous), nullptr);
    EXPECT_EQ(registry.GetPreviousObject(nullptr), previous);
}

TEST_F(Registry, TellsAMoveThatMovesSomethingAndKnowsNoStrangers)
{
    Session * const a = make("a");
    Session * const b = make("b");
    Recorder recorder(registry);
    registry.moveObjectBefore(b, a);
    registry.moveObjectAfter(a, b);
    registry.moveObjectBefore(a, a);
    ASSERT_EQ(recorder.GetCount(), 1u);
    EXPECT_EQ(recorder.GetAs<TesseralisMoveEvent>(0)->GetObject(), b);
    EXPECT_EQ(TesseralisIterator(registry, a).GetName(), "a");
    Session const stranger("stranger", 0);
    EXPECT_EQ(registry.GetNextObject(&stranger), nullptr);
    EXPECT_TRUE(TesseralisIterator(registry, &stranger).IsAtEnd());
}

TEST_F(Registry, AnnouncesWhatHappensToItsObjects)
{
    Recorder recorder(registry);
    std::string seenType;
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (auto const * const about = dynamic_cast<TesseralisObjectEvent const *>(&event)) {
            EXPECT_EQ(registry.GetObject(about->GetName()), about->GetObject());
            seenType = about->GetObject()->GetObjectTypeName();
        }
    });
    Session * const session = make("a");
    EXPECT_NE(recorder.GetAs<TesseralisAdditionEvent>(0), nullptr);
    EXPECT_EQ(seenType, "session");

    recorder.clear();
    Recorder onSession(*session);
    session->SetObjectName("b");
    TesseralisRenameEvent const * const renamed = recorder.GetAs<TesseralisRenameEvent>(0);
    ASSERT_NE(renamed, nullptr);
    EXPECT_EQ(renamed->GetCurrentName() + renamed->GetPreviousName(), "ba");
    EXPECT_NE(recorder.GetAs<TesseralisChangeEvent>(1), nullptr);

    session->SetObjectName("b");
    EXPECT_EQ(recorder.GetCountOf<TesseralisRenameEvent>(), 1u);
    EXPECT_EQ(onSession.GetCountOf<ObjectRenameEvent>(), 2u);

    recorder.clear();
    registry.destroyObject(session);
    ASSERT_EQ(recorder.GetCount(), 2u);
    EXPECT_NE(recorder.GetAs<TesseralisChangeEvent>(0), nullptr);
    EXPECT_NE(recorder.GetAs<TesseralisRemovalEvent>(1), nullptr);
    EXPECT_EQ(seenType, "session") << "the destructor ran before the removal was told";
    EXPECT_FALSE(registry.HasObject("b"));
}

TEST_F(Registry, AnObserverThatThrowsLeavesNothingHalfDone)
{
    Session * const session = make("a");
    Recorder onSession(*session);
    Recorder thrower(registry);
    Recorder behind(registry);
    thrower.SetReaction([](Observable const &, ObservableEvent const &) { throw Exception("never mind"); });
    EXPECT_EQ(messageOf([] { Object("half made", ObjectAttribute::Registered); }), "never mind");
    EXPECT_FALSE(registry.HasObject("half made"));
    EXPECT_EQ(messageOf([&] { session->SetObjectName("b"); }), "never mind");
    onSession.clear();
    messageOf([&] {
        session->beginModification();
        session->endModification();
    });
    EXPECT_EQ(onSession.GetCount(), 1u) << "a bracket was left open";

    EXPECT_EQ(logOf([&] { registry.destroyObject(session); }), "never mind\n\nnever mind\n\n")
        << "the change and the removal";
    EXPECT_FALSE(registry.HasObject("b"));
    EXPECT_EQ(behind.GetCountOf<TesseralisRemovalEvent>(), 2u);
}

TEST_F(Registry, AnObjectOnItsWayOutIsNotDeletedAgain)
{
    Session * const session = make("a");
    Recorder recorder(*session);
    Recorder onRegistry(registry);
    auto const destroyAgain = [&](Observable const &, ObservableEvent const &) {
        registry.destroyObject(session);
        registry.clearObjects();
    };
    recorder.SetReaction(destroyAgain);
    onRegistry.SetReaction(destroyAgain);
    registry.destroyObject(session);
    EXPECT_FALSE(registry.HasObject(session));
}

TEST_F(Registry, NamespacesPrefixWhatIsCreatedAndLookedUp)
{
    registry.saveNamespace();
    registry.SetNamespace("n/");
    Object * const object = registry.createObject("session", "m", ObjectAttribute::All);
    Session const direct("m", ObjectAttribute::Registered);
    EXPECT_EQ(object->GetObjectName(), "n/m");
    EXPECT_EQ(direct.GetObjectName(), "m");
    EXPECT_EQ(registry.GetObject("m"), object);
    EXPECT_EQ(registry.GetObjects(), std::list<Object *>({object}));
    registry.restoreNamespace();
    registry.restoreNamespace();
    EXPECT_EQ(registry.GetNamespace(), "");
    EXPECT_EQ(registry.GetObject("session", "n/m"), object);
    EXPECT_EQ(registry.GetObject("other", "n/m"), nullptr);
    EXPECT_EQ(registry.GetObjects("session").size(), 2u);
    EXPECT_EQ(registry.createObject("no such type", ObjectAttribute::All), nullptr);
    EXPECT_EQ(registry.createObject("session", ObjectAttribute::All)->GetObjectName(), "session");
}

TEST_F(Registry, DeletesOnlyWhatMayBeDeletedAndNewestFirst)
{
    auto const kept = std::make_unique<Session>("kept", ObjectAttribute::Registered);
    make("a");
    make("b");
    registry.destroyObject("kept");
    registry.destroyObject(kept.get());
    Texts removed;
    Recorder recorder(registry);
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (auto const * const removal = dynamic_cast<TesseralisRemovalEvent const *>(&event)) {
            removed.push_back(removal->GetName());
        }
    });
    registry.clearObjects();
    EXPECT_EQ(removed, Texts({"b", "a"}));
    EXPECT_EQ(namesInOrder(), Texts({"kept"}));
}

TEST_F(Registry, CopiesAreNotRegisteredNorForgottenAfterAnAssignment)
{
    {
        Object assigned("a", ObjectAttribute::Registered);
        assigned = Object();
    }
    EXPECT_FALSE(registry.HasObject("a"));
    Session const original("a", ObjectAttribute::Registered);
    Object const copy(original);
    EXPECT_TRUE(copy.HasAttribute(ObjectAttribute::Registered));
    EXPECT_FALSE(registry.HasObject(&copy));
    EXPECT_EQ(messageOf([&] { copy.GetObjectName(); }), "The specified object does not exist!");
    Object unregistered;
    unregistered.SetObjectName("b");
    EXPECT_EQ(unregistered.GetObjectName(), "");
}

TEST_F(Registry, CountsFileReferences)
{
    registry.addFileReference("f");
    registry.addFileReference("f");
    registry.addFileReference("");
    registry.removeFileReference("g");
    registry.removeFileReference("f");
    EXPECT_EQ(registry.GetFileReferences(), std::set<std::string>({"f"}));
    registry.removeFileReference("f");
    EXPECT_TRUE(registry.GetFileReferences().empty());
}
