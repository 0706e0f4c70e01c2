#include "value/Archive.h"

#include "object/Exception.h"
#include "object/Tesseralis.h"
#include "support/Messages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

using namespace tesseralis;
using namespace tesseralis::test;

namespace {
using Names = std::vector<std::string>;

/// Takes out all children and notes their names.
Names drain(ArchiveElement element)
{
    Names names;
    for (ArchiveElement child = element.retrieve(); !child.IsEmpty(); child = element.retrieve()) {
        names.push_back(child.GetName());
    }
    return names;
}

/// Begins a document with children of these names, which they have as an attribute as well.
ArchiveElement root(Archive & archive, Names const & children)
{
    ArchiveElement element = ArchiveElement(archive).store("root");
    for (std::string const & child : children) {
        element.store(child).SetAttribute("name", child);
    }
    return element;
}

/// An object with a text, which can be read only after the one that it names as its guide.
class Note : public Object
{
public:
    Note(std::string const & name, unsigned int attributes) : Object(static_cast<Object *>(nullptr))
    {
        constructObject(name, attributes);
    }
    ~Note() override { destroyObject(); }

    static std::string GetTypeName() { return "note"; }
    static Object * createObject(std::string const & name, unsigned int attributes)
    {
        return new Note(name, attributes);
    }
    std::string GetObjectTypeName() const override { return GetTypeName(); }

    void store(ArchiveElement & element) override
    {
        element.SetAttribute("guide", guide);
        element.SetValue(text);
    }
    void retrieve(ArchiveElement & element) override
    {
        if (element.GetValue() == "unreadable") {
            throw Exception("Unreadable!");
        }
        guide = element.GetAttribute("guide");
        text = element.GetValue();
        s_read.push_back(GetObjectName());
    }
    bool IsRetrievable(ArchiveElement & element) const override
    {
        std::string const needed = element.GetAttribute("guide");
        return needed.empty() || std::find(s_read.begin(), s_read.end(), needed) != s_read.end();
    }

    std::string guide;
    std::string text;
    static inline Names s_read;
};

class ArchivedRegistry : public testing::Test
{
protected:
    ArchivedRegistry()
    {
        registry.registerObjectType<Note>();
        Note::s_read.clear();
    }
    ~ArchivedRegistry() override
    {
        registry.clearObjects();
        registry.SetNamespace("");
    }

    /// Adds a note's element to a document, which it begins where that is empty.
    void add(std::string const & name, std::string const & guide = "", std::string const & text = "")
    {
        ArchiveElement document(archive);
        if (document.IsEmpty()) {
            document = document.store("tesseralis");
        }
        ArchiveElement element = document.store("note");
        element.SetAttribute("name", name);
        element.SetAttribute("guide", guide);
        element.SetValue(text);
    }

    Tesseralis & registry = Tesseralis::Get();
    Archive archive;
};
} // namespace

TEST(Archive, ReadingByNameGivesItsChildrenInOrderAndLeavesOthers)
{
    Archive archive;
    ArchiveElement element = root(archive, {"value", "link", "value", "other"});
    EXPECT_TRUE(element.IsRetrievable("value"));
    EXPECT_FALSE(element.IsRetrievable("root"));
    EXPECT_EQ(element.retrieve("value").GetAttribute("name"), "value");
    EXPECT_FALSE(element.retrieve("value").IsEmpty());
    ArchiveElement const none = element.retrieve("value");
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_EQ(none.GetName() + none.GetValue() + none.GetAttribute("name"), "");
    EXPECT_EQ(drain(element), Names({"link", "other"}));
    EXPECT_FALSE(element.IsRetrievable());
}

TEST(Archive, ASearchForAnAttributeGoesUpwardsAlsoFromAnElementThatWasTakenOut)
{
    Archive archive;
    ArchiveElement top = root(archive, {"a", "b", "c"});
    ArchiveElement b = top.retrieve("b");
    ArchiveElement inner = b.store("inner");
    inner.store("plain");

    EXPECT_TRUE(b.IsRetrievable("name", "c"));
    EXPECT_FALSE(b.IsRetrievable("name", "b"));
    EXPECT_EQ(b.retrieve("name", "a").GetName(), "a");
    EXPECT_TRUE(b.retrieve("name", "a").IsEmpty());
    EXPECT_EQ(inner.retrieve("name", "").GetName(), "plain") << "a missing attribute counts as empty";
    EXPECT_EQ(inner.retrieve("name", "").GetName(), "inner") << "not taken out, it is a candidate itself";
    EXPECT_TRUE(inner.retrieve("name", "c").IsEmpty()) << "the way up ends at what was taken out";
    EXPECT_EQ(drain(top), Names({"c"}));
}

TEST(Archive, AttributesKeepTheirFirstPlaceAndLastValue)
{
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("many");
    constexpr int c_count = 1000;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < c_count; ++i) {
            element.SetAttribute("n" + std::to_string(i), std::to_string(i * round));
        }
    }

    Archive copy(archive);
    int count = 0;
    for (ArchiveElementAttributeIterator i{ArchiveElement(copy)}; !i.IsAtEnd(); ++i, ++count) {
        EXPECT_EQ(i.GetName(), "n" + std::to_string(count));
        EXPECT_EQ(*i, std::to_string(count));
        EXPECT_EQ(ArchiveElement(copy).GetAttribute(i.GetName()), *i);
    }
    EXPECT_EQ(count, c_count);
    EXPECT_EQ(element.GetAttribute("n1000"), "");
}

TEST(Archive, EqualityIgnoresTheOrderOfAttributesAlone)
{
    auto const build = [](Archive & archive, Names const & attributes, Names const & children) {
        ArchiveElement element = root(archive, children);
        for (std::string const & name : attributes) {
            element.SetAttribute(name, "1");
        }
        return element;
    };
    Archive first;
    ArchiveElement const reference = build(first, {"a", "b"}, {"x", "y"});

    Archive other;
    EXPECT_EQ(build(other, {"b", "a"}, {"x", "y"}), reference);
    EXPECT_NE(build(other, {"a", "b"}, {"y", "x"}), reference);
    EXPECT_NE(build(other, {"a", "c"}, {"x", "y"}), reference);
    EXPECT_NE(build(other, {"a"}, {"x", "y"}), reference);
    EXPECT_NE(build(other, {"a", "b"}, {"x"}), reference);
    ArchiveElement changed = build(other, {"a", "b"}, {"x", "y"});
    changed.SetValue("text");
    EXPECT_NE(changed, reference);

    Archive empty;
    EXPECT_NE(ArchiveElement(empty), reference);
    EXPECT_EQ(ArchiveElement(empty), ArchiveElement(empty));
}

TEST(Archive, SubstitutesInValuesAndAttributesWithoutLookingAtWhatItPutIn)
{
    struct Case
    {
        std::string text, from, to, result;
    };
    for (Case const & c : {Case{"a-a", "a", "aa", "aa-aa"}, Case{"aaa", "aa", "b", "ba"}, Case{"xyx", "x", "", "y"},
                           Case{"a", "", "b", "a"}, Case{"abc", "abcd", "x", "abc"}}) {
        Archive archive;
        archive.substitute(c.from, c.to);
        ArchiveElement element = ArchiveElement(archive).store("a").store("a");
        element.SetValue(c.text);
        element.SetAttribute("a", c.text);
        archive.substitute(c.from, c.to);
        EXPECT_EQ(element.GetValue(), c.result);
        EXPECT_EQ(element.GetAttribute("a"), c.result);
        EXPECT_EQ(element.GetName(), "a");
    }
}

TEST(Archive, ACopyIsATreeOfItsOwn)
{
    Archive source(ArchiveFlag::WithoutValues);
    Archive const empty(source);
    EXPECT_TRUE(empty.IsEmpty());

    ArchiveElement element = root(source, {"a", "b"});
    Archive copy(source);
    EXPECT_EQ(ArchiveElement(copy), element);
    EXPECT_TRUE(copy.HasFlags(ArchiveFlag::WithoutValues));
    drain(element);
    EXPECT_EQ(drain(ArchiveElement(copy)), Names({"a", "b"}));

    copy = copy;
    EXPECT_FALSE(copy.IsEmpty());
    copy = empty;
    EXPECT_TRUE(copy.IsEmpty());
}

TEST(Archive, AnEmptyElementBeginsADocumentAndElementsOutliveTheirs)
{
    Archive archive(6);
    ArchiveElement const branch = root(archive, {"branch"}).retrieve();
    ArchiveElement(branch).store("leaf");
    ArchiveElement missing = ArchiveElement(archive).retrieve("missing");
    EXPECT_EQ(missing.store("new").GetName(), "new");
    EXPECT_EQ(ArchiveElement(archive).GetName(), "new");
    EXPECT_TRUE(branch.IsRetrievable("leaf"));

    missing.SetArchiveFlags(3, true);
    missing.SetArchiveFlags(4, false);
    EXPECT_EQ(branch.GetArchiveFlags(), 3u);
    EXPECT_TRUE(branch.HasArchiveFlags(3));
    EXPECT_FALSE(branch.HasArchiveFlags(5));
}

TEST(Archive, TreesMayBeDeeperThanTheStack)
{
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("root");
    for (int i = 0; i < 300000; ++i) {
        element = element.store("level");
    }
    element.SetValue("deep");

    Archive copy(archive);
    EXPECT_EQ(ArchiveElement(copy), ArchiveElement(archive));
    copy.substitute("deep", "deeper");
    EXPECT_NE(ArchiveElement(copy), ArchiveElement(archive));
    EXPECT_FALSE(element.IsRetrievable("attribute", "value"));
}

TEST(Archive, RandomEditsMatchAPlainList)
{
    std::mt19937 random(7);
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("root");
    std::vector<ArchiveElement> model;
    auto const expectTaken = [&](ArchiveElement const & taken, auto const & matches) {
        auto const found = std::find_if(model.begin(), model.end(), matches);
        ASSERT_EQ(taken.IsEmpty(), found == model.end());
        if (found != model.end()) {
            EXPECT_EQ(taken.GetValue(), found->GetValue());
            model.erase(found);
        }
    };
    for (int i = 0; i < 10000; ++i) {
        std::string const text = std::to_string(random() % 50);
        switch (random() % 9) {
        case 0:
            expectTaken(element.retrieve("e" + text), [&](auto const & e) { return e.GetName() == "e" + text; });
            break;
        case 1:
            expectTaken(element.retrieve("id", text), [&](auto const & e) { return e.GetAttribute("id") == text; });
            break;
        case 2:
            if (!model.empty()) {
                model[random() % model.size()].SetAttribute("id", text);
            }
            break;
        case 3:
            expectTaken(element.retrieve("id", ""), [](auto const & e) { return e.GetAttribute("id").empty(); });
            break;
        default:
            model.push_back(element.store("e" + text));
            model.back().SetValue(std::to_string(i));
        }
    }
    EXPECT_GT(model.size(), 100u);
    while (!model.empty()) {
        expectTaken(element.retrieve(), [](auto const &) { return true; });
    }
}

TEST_F(ArchivedRegistry, ComesBackWithEveryPersistentObjectInOrder)
{
    (new Note("a", ObjectAttribute::All))->guide = "b";
    (new Note("b", ObjectAttribute::All))->text = "text";
    Note const passing("c", ObjectAttribute::Registered | ObjectAttribute::Persistent);
    archive.store();
    EXPECT_EQ(ArchiveElement(archive).GetName(), "tesseralis");
    EXPECT_EQ(ArchiveElement(archive).GetAttribute("version"), "0.8.0-3801 (20121004)");
    Archive again;
    again.store();
    EXPECT_EQ(ArchiveElement(again), ArchiveElement(archive));
    EXPECT_EQ(drain(ArchiveElement(again)), Names({"note", "note"}));

    registry.clearObjects();
    archive.retrieve(0);
    EXPECT_TRUE(archive.IsEmpty());
    EXPECT_EQ(Note::s_read, Names({"b", "a"})) << "the one that refers forward has to wait";
    again.store();
    EXPECT_EQ(registry.GetObjects().size(), 3u);
    EXPECT_TRUE(registry.GetObject("b")->HasAttribute(ObjectAttribute::All));
    EXPECT_EQ(dynamic_cast<Note &>(*registry.GetObject("b")).text, "text");

    archive.retrieve(0);
    EXPECT_EQ(Note::s_read.size(), 2u);
}

TEST_F(ArchivedRegistry, MakesWhatIsMissingUnderTheNamespaceWithTheGivenAttributes)
{
    registry.SetNamespace("n/");
    Note const present("n/present", ObjectAttribute::Registered);
    add("present");
    add("new");
    archive.retrieve(ObjectAttribute::Registered | ObjectAttribute::Destroyable);
    EXPECT_EQ(Note::s_read, Names({"n/present", "n/new"}));
    EXPECT_FALSE(registry.GetObject("new")->HasAttribute(ObjectAttribute::Persistent));
}

TEST_F(ArchivedRegistry, ALoadEndsAtWhatCannotBeMadeOrWhereAllWait)
{
    add("first");
    add("second");
    ArchiveElement(archive).store("unknown").SetAttribute("name", "u");
    add("third");
    archive.retrieve(0);
    EXPECT_TRUE(archive.IsEmpty());
    EXPECT_EQ(Note::s_read, Names({"first", "second"}));
    EXPECT_TRUE(registry.HasObject("third")) << "made, but not read";

    add("a", "b");
    add("b", "a");
    add("c");
    archive.retrieve(0);
    EXPECT_TRUE(archive.IsEmpty());
    EXPECT_EQ(Note::s_read, Names({"first", "second", "c"}));
}

TEST_F(ArchivedRegistry, ADocumentOfAnotherKindIsDropped)
{
    add("a");
    ArchiveElement(archive).SetName("other");
    archive.retrieve(0);
    EXPECT_TRUE(archive.IsEmpty());
    EXPECT_TRUE(registry.GetObjects().empty());
}

TEST_F(ArchivedRegistry, WhatAnObjectThrowsLeavesTheRest)
{
    add("a");
    add("b", "", "unreadable");
    add("c");
    EXPECT_EQ(messageOf([&] { archive.retrieve(0); }), "Unreadable!");
    EXPECT_EQ(Note::s_read, Names({"a"}));
    EXPECT_EQ(ArchiveElement(archive).retrieve("note").GetAttribute("name"), "c");
}
