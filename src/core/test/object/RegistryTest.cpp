#include "object/Tesseralis.h"
#include "object/Version.h"
#include "support/Messages.h"
#include "support/Recorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace tesseralis;
using namespace tesseralis::test;

namespace {
/// A host's own object class, built and torn down in the two-step way.
class Thing : public Object
{
public:
    explicit Thing(unsigned int attributes) : Thing(GetTypeName(), attributes) {}
    Thing(std::string const & name, unsigned int attributes) : Object(static_cast<Object *>(nullptr))
    {
        constructObject(name, attributes);
    }
    ~Thing() override { destroyObject(); }

    static std::string GetTypeName() { return "thing"; }
    static Object * createObject(std::string const & name, unsigned int attributes)
    {
        return new Thing(name, attributes);
    }
    std::string GetObjectTypeName() const override { return GetTypeName(); }
};

std::vector<std::string> namesInOrder()
{
    std::vector<std::string> names;
    for (TesseralisIterator i(Tesseralis::Get()); !i.IsAtEnd(); ++i) {
        names.push_back(i.GetName());
    }
    return names;
}

using Names = std::vector<std::string>;

class Registry : public testing::Test
{
protected:
    Registry() { registry.registerObjectType<Thing>(); }
    ~Registry() override
    {
        registry.clearObjects();
        registry.SetNamespace("");
    }

    Thing * make(std::string const & name) { return new Thing(name, ObjectAttribute::All); }

    Tesseralis & registry = Tesseralis::Get();
};
} // namespace

TEST_F(Registry, TellsItsVersion)
{
    EXPECT_EQ(registry.GetVersion().GetString(), "0.8.0-3801 (20121004)");
}

TEST_F(Registry, MakesNamesUniqueAndGivesThemFreeAgain)
{
    Thing * const x = make("x");
    make("x");
    Thing * const x2 = make("x");
    EXPECT_EQ(namesInOrder(), Names({"x", "x1", "x2"}));

    make("x1");
    EXPECT_EQ(namesInOrder(), Names({"x", "x1", "x2", "x11"}));
    x2->SetObjectName("y");
    make("x");
    registry.destroyObject(x);
    make("x");
    EXPECT_EQ(namesInOrder(), Names({"x1", "y", "x11", "x2", "x"}));
    registry.destroyObject("x1");
    make("x");
    EXPECT_EQ(namesInOrder().back(), "x1");
}

TEST_F(Registry, KeepsTheOrderThroughMoves)
{
    Thing * const a = make("a");
    make("b");
    Thing * const c = make("c");
    EXPECT_EQ(registry.GetNextObject(nullptr), a);
    EXPECT_EQ(registry.GetPreviousObject(nullptr), c);
    EXPECT_EQ(registry.GetNextObject(c), nullptr);
    EXPECT_EQ(registry.GetPreviousObject(a), nullptr);

    Recorder recorder(registry);
    registry.moveObjectBefore(c, a);
    EXPECT_EQ(namesInOrder(), Names({"c", "a", "b"}));
    registry.moveObjectAfter(a, c);
    registry.moveObjectBefore(a, a);
    Thing const stranger("stranger", 0);
    EXPECT_EQ(registry.GetNextObject(&stranger), nullptr);
    ASSERT_EQ(recorder.GetCount(), 1u);
    EXPECT_EQ(recorder.GetAs<TesseralisMoveEvent>(0)->GetObject(), c);
    TesseralisIterator from(registry, a);
    EXPECT_EQ((++from).GetName(), "b");
    EXPECT_TRUE(TesseralisIterator(registry, &stranger).IsAtEnd());
}

TEST_F(Registry, AgreesWithAPlainListAfterManyChanges)
{
    std::mt19937 random(20260101);
    auto const below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    std::vector<std::pair<std::string, Thing *>> model;
    auto const isTaken = [&](std::string const & name) {
        return std::any_of(model.begin(), model.end(), [&](auto const & entry) { return entry.first == name; });
    };
    for (int step = 0; step < 4000; ++step) {
        std::string const wanted = std::string(1, "xyz"[below(3)]) + (below(2) ? "" : std::to_string(below(15)));
        std::size_t const action = below(10);
        if (model.empty() || action < 4) {
            std::string unique = wanted;
            for (int number = 1; isTaken(unique); ++number) {
                unique = wanted + std::to_string(number);
            }
            model.emplace_back(unique, make(wanted));
            continue;
        }
        std::size_t const first = below(model.size());
        std::size_t const second = below(model.size());
        if (action < 7) {
            registry.destroyObject(model[first].second);
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
    for (auto const & [name, object] : model) {
        ASSERT_EQ(i.GetName(), name);
        ASSERT_EQ(i.GetObject(), object);
        ASSERT_EQ(registry.GetObject("thing", name), object);
        ASSERT_EQ(object->GetObjectName(), name);
        ++i;
    }
    EXPECT_TRUE(i.IsAtEnd());
}

TEST_F(Registry, AnnouncesWhatHappensToItsObjects)
{
    Recorder recorder(registry);
    std::string seenType;
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        auto const * const about = dynamic_cast<TesseralisObjectEvent const *>(&event);
        if (about != nullptr) {
            EXPECT_EQ(registry.GetObject(about->GetName()), about->GetObject());
            seenType = about->GetObject()->GetObjectTypeName();
        }
    });
    Thing * const thing = make("a");
    EXPECT_NE(recorder.GetAs<TesseralisAdditionEvent>(0), nullptr);
    EXPECT_EQ(seenType, "thing");

    recorder.clear();
    Recorder onThing(*thing);
    thing->SetObjectName("b");
    TesseralisRenameEvent const * const renamed = recorder.GetAs<TesseralisRenameEvent>(0);
    ASSERT_NE(renamed, nullptr);
    EXPECT_EQ(renamed->GetCurrentName() + renamed->GetPreviousName(), "ba");
    EXPECT_NE(recorder.GetAs<TesseralisChangeEvent>(1), nullptr);

    thing->SetObjectName("b");
    EXPECT_EQ(recorder.GetCountOf<TesseralisRenameEvent>(), 1u);
    EXPECT_EQ(onThing.GetCountOf<ObjectRenameEvent>(), 2u);

    recorder.clear();
    registry.destroyObject(thing);
    ASSERT_EQ(recorder.GetCount(), 2u);
    EXPECT_NE(recorder.GetAs<TesseralisChangeEvent>(0), nullptr);
    EXPECT_NE(recorder.GetAs<TesseralisRemovalEvent>(1), nullptr);
    EXPECT_EQ(seenType, "thing") << "the destructor ran before the removal was told";
    EXPECT_FALSE(registry.HasObject("b"));
}

TEST_F(Registry, AnObserverThatThrowsLeavesNothingHalfDone)
{
    Thing * const thing = make("a");
    Recorder onThing(*thing);
    Recorder thrower(registry);
    Recorder behind(registry);
    thrower.SetReaction([](Observable const &, ObservableEvent const &) { throw Exception("never mind"); });
    EXPECT_EQ(messageOf([] { Object("half made", ObjectAttribute::Registered); }), "never mind");
    EXPECT_FALSE(registry.HasObject("half made"));
    EXPECT_EQ(messageOf([&] { thing->SetObjectName("b"); }), "never mind");
    onThing.clear();
    messageOf([&] {
        thing->beginModification();
        thing->endModification();
    });
    EXPECT_EQ(onThing.GetCount(), 1u) << "a bracket was left open";

    testing::internal::CaptureStdout();
    registry.destroyObject(thing);
    EXPECT_NE(testing::internal::GetCapturedStdout().find("never mind"), std::string::npos);
    EXPECT_FALSE(registry.HasObject("b"));
    EXPECT_EQ(behind.GetCountOf<TesseralisRemovalEvent>(), 2u);
}

TEST_F(Registry, AnObjectOnItsWayOutIsNotDeletedAgainNorForgottenAfterAnAssignment)
{
    Thing * const thing = make("a");
    Recorder recorder(*thing);
    Recorder onRegistry(registry);
    auto const destroyAgain = [&](Observable const &, ObservableEvent const &) {
        registry.destroyObject(thing);
        registry.clearObjects();
    };
    recorder.SetReaction(destroyAgain);
    onRegistry.SetReaction(destroyAgain);
    registry.destroyObject(thing);
    EXPECT_FALSE(registry.HasObject(thing));
    onRegistry.SetReaction(nullptr);
    {
        Object assigned("assigned", ObjectAttribute::Registered);
        assigned = Object();
    }
    EXPECT_FALSE(registry.HasObject("assigned"));
}

TEST_F(Registry, NamespacesPrefixWhatIsCreatedAndLookedUp)
{
    registry.saveNamespace();
    registry.SetNamespace("n/");
    Object * const object = registry.createObject("thing", "m", ObjectAttribute::All);
    Thing const direct("m", ObjectAttribute::Registered);
    EXPECT_EQ(object->GetObjectName(), "n/m");
    EXPECT_EQ(direct.GetObjectName(), "m");
    EXPECT_EQ(registry.GetObject("m"), object);
    EXPECT_EQ(registry.GetObjects(), std::list<Object *>({object}));
    registry.restoreNamespace();
    registry.restoreNamespace();
    EXPECT_EQ(registry.GetNamespace(), "");
    EXPECT_EQ(registry.GetObject("thing", "n/m"), object);
    EXPECT_EQ(registry.GetObject("other", "n/m"), nullptr);
    EXPECT_EQ(registry.GetObjects("thing").size(), 2u);
    EXPECT_EQ(registry.createObject("no such type", ObjectAttribute::All), nullptr);
    EXPECT_EQ(registry.createObject("thing", ObjectAttribute::All)->GetObjectName(), "thing");
}

TEST_F(Registry, DeletesOnlyWhatMayBeDeletedAndNewestFirst)
{
    auto const kept = std::make_unique<Thing>("kept", ObjectAttribute::Registered);
    make("a");
    make("b");
    registry.destroyObject("kept");
    registry.destroyObject(kept.get());
    Names removed;
    Recorder recorder(registry);
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (auto const * const removal = dynamic_cast<TesseralisRemovalEvent const *>(&event)) {
            removed.push_back(removal->GetName());
        }
    });
    registry.clearObjects();
    EXPECT_EQ(removed, Names({"b", "a"}));
    EXPECT_EQ(namesInOrder(), Names({"kept"}));
}

TEST_F(Registry, CopiesAreNotRegistered)
{
    Thing const original("a", ObjectAttribute::Registered);
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
