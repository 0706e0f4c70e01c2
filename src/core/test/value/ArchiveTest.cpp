#include "value/Archive.h"
#include "support/Testing.h"
#include "value/MemorySerializer.h"

namespace {
/// Begins or replaces the archive's document.
ArchiveElement build(Archive & archive, std::string const & text)
{
    archive = Archive();
    MemorySerializer().load(archive, text);
    return ArchiveElement(archive);
}

std::string textOf(Archive archive)
{
    std::string text;
    MemorySerializer().save(text, archive);
    return text;
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
        guide = element.GetAttribute("guide");
        text = element.GetValue();
        if (text == "bad") {
            throw Exception("Bad!");
        }
        s_read.push_back(GetObjectName());
    }
    bool IsRetrievable(ArchiveElement & element) const override
    {
        std::string const needed = element.GetAttribute("guide");
        return needed.empty() || std::find(s_read.begin(), s_read.end(), needed) != s_read.end();
    }

    std::string guide;
    std::string text;
    static inline Texts s_read;
};

class ArchivedRegistry : public testing::Test
{
protected:
    ArchivedRegistry() { registry.registerObjectType<Note>(); }
    ~ArchivedRegistry() override
    {
        Note::s_read.clear();
        registry.clearObjects();
        registry.SetNamespace("");
    }

    Tesseralis & registry = Tesseralis::Get();
    Archive archive;
};
} // namespace

TEST(Archive, ASearchForAnAttributeGoesUpwardsAlsoFromAnElementThatWasTakenOut)
{
    Archive archive;
    ArchiveElement top = build(archive, "<r><e n='a'/><e n='b'><e n='inner'><plain/></e></e><e n='c'/></r>");
    ArchiveElement b = top.retrieve("n", "b");
    EXPECT_TRUE(b.IsRetrievable("n", "c") && !b.IsRetrievable("n", "b"));
    EXPECT_EQ(b.retrieve("n", "a").GetName(), "e");
    EXPECT_TRUE(b.retrieve("n", "a").IsEmpty());
    ArchiveElement inner = b.retrieve();
    EXPECT_EQ(inner.GetParent(), b);
    EXPECT_EQ(b.GetParent(), top);
    EXPECT_TRUE(top.GetParent().IsEmpty());
    EXPECT_EQ(inner.retrieve("n", "").GetName(), "plain") << "a missing attribute counts as empty";
    EXPECT_FALSE(inner.IsRetrievable("n", "c")) << "the way up ends at what was taken out";
    EXPECT_EQ(textOf(archive), "<r><e n=\"c\"></e></r>");

    for (int i = 0; i < 100; ++i) {
        top.store("e").SetAttribute("n", "many");
    }
    EXPECT_FALSE(top.IsRetrievable("n", ""));
    top.store("late");
    EXPECT_EQ(top.retrieve("n", "").GetName(), "late");
}

TEST(Archive, AttributesKeepTheirFirstPlaceAndLastValue)
{
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("many");
    for (int i = 0; i < 2000; ++i) {
        element.SetAttribute("n" + std::to_string(i % 1000), std::to_string(i));
    }
    Archive copy(archive);
    int count = 0;
    for (ArchiveElementAttributeIterator i{ArchiveElement(copy)}; !i.IsAtEnd(); ++i, ++count) {
        EXPECT_EQ(i.GetName() + "=" + *i, "n" + std::to_string(count) + "=" + std::to_string(count + 1000));
        EXPECT_EQ(ArchiveElement(copy).GetAttribute(i.GetName()), *i);
    }
    EXPECT_EQ(count, 1000);
    EXPECT_EQ(element.GetAttribute("n1000"), "");
}

TEST(Archive, EqualityIgnoresTheOrderOfAttributesAlone)
{
    Archive first;
    Archive second;
    ArchiveElement const reference = build(first, "<a b='1' c='2'>t<x/><y/></a>");
    EXPECT_EQ(reference, build(second, "<a c='2' b='1'>t<x/><y/></a>"));
    for (char const * text :
         {"<z b='1' c='2'>t<x/><y/></z>", "<a b='1' c='2'>t<y/><x/></a>", "<a b='1' c='2'><x/><y/></a>",
          "<a b='1' d='2'>t<x/><y/></a>", "<a b='1' c='3'>t<x/><y/></a>", "<a b='1'>t<x/><y/></a>",
          "<a b='1' c='2'>t<x/></a>", "<a b='1' c='2'>t<x/><y><y/></y></a>"}) {
        EXPECT_NE(build(second, text), reference) << text;
    }
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
        build(archive, "<a><a a='" + c.text + "'>" + c.text + "</a></a>");
        archive.substitute(c.from, c.to);
        ArchiveElement const element = ArchiveElement(archive).retrieve("a");
        EXPECT_EQ(element.GetAttribute("a"), c.result);
        EXPECT_EQ(element.GetValue(), c.result);
    }
}

TEST(Archive, ACopyIsATreeOfItsOwnAndElementsOutliveTheirs)
{
    Archive source(ArchiveFlag::WithoutValues);
    Archive copy(source);
    EXPECT_TRUE(copy.IsEmpty());
    ArchiveElement const branch = build(source, "<root><branch><leaf/></branch></root>");
    copy = source;
    ArchiveElement(source).retrieve();
    copy = static_cast<Archive const &>(copy);
    EXPECT_EQ(textOf(copy), "<root><branch><leaf></leaf></branch></root>");

    ArchiveElement missing = ArchiveElement(source).retrieve("missing");
    EXPECT_EQ(missing.GetName() + missing.GetValue() + missing.GetAttribute("name"), "");
    missing.store("new");
    EXPECT_EQ(ArchiveElement(source).GetName(), "new") << "an empty element begins a document";
    missing.SetArchiveFlags(7, true);
    missing.SetArchiveFlags(4, false);
    EXPECT_EQ(branch.GetArchiveFlags(), 3u);
    EXPECT_TRUE(Archive(source).HasFlags(3u));
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
    for (int i = 0; i < 11000; ++i) {
        std::string const text = std::to_string(random() % 20);
        auto const choice = random() % (i / 1000 % 2 == 0 ? 10 : 6); // it grows and shrinks to nothing in turns
        if (choice == 0) {
            expectTaken(element.retrieve("e" + text), [&](auto const & e) { return e.GetName() == "e" + text; });
        } else if (choice == 1) {
            expectTaken(element.retrieve("id", text), [&](auto const & e) { return e.GetAttribute("id") == text; });
        } else if (choice == 2) {
            expectTaken(element.retrieve("id", ""), [](auto const & e) { return e.GetAttribute("id").empty(); });
        } else if (choice == 3 && !model.empty()) {
            model[random() % model.size()].SetAttribute("id", text);
        } else if (choice == 4 && !model.empty()) {
            ArchiveElement & renamed = model[random() % model.size()];
            renamed.SetName("e" + text);
            EXPECT_EQ(renamed.GetName(), "e" + text);
        } else {
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
    std::string const document = "<tesseralis version=\"0.8.0-3801 (20121004)\"><note name=\"a\" guide=\"b\"></note>"
                                 "<note name=\"b\" guide=\"\"><![CDATA[text]]></note></tesseralis>";
    EXPECT_EQ(textOf(archive), document);

    registry.clearObjects();
    archive.retrieve(0);
    EXPECT_TRUE(archive.IsEmpty());
    EXPECT_EQ(Note::s_read, Texts({"b", "a"})) << "the one that refers forward has to wait";
    archive.store();
    EXPECT_EQ(textOf(archive), document);
}

TEST_F(ArchivedRegistry, MakesWhatIsMissingUnderTheNamespaceWithTheGivenAttributes)
{
    registry.SetNamespace("n/");
    Note const present("n/present", ObjectAttribute::Registered);
    build(archive, "<tesseralis><note name='present'/><note name='new'/></tesseralis>");
    archive.retrieve(ObjectAttribute::Registered | ObjectAttribute::Destroyable);
    EXPECT_EQ(Note::s_read, Texts({"n/present", "n/new"}));
    EXPECT_FALSE(registry.GetObject("new")->HasAttribute(ObjectAttribute::Persistent));
}

TEST_F(ArchivedRegistry, ALoadEndsAtWhatCannotBeMadeOrWhereAllWait)
{
    for (auto const & [text, read] : std::vector<std::pair<std::string, Texts>>{
             {"<tesseralis><note name='1'/><unknown name='2'/><note name='3'/></tesseralis>", {"1"}},
             {"<tesseralis><note name='4' guide='5'/><note name='5' guide='4'/><note name='6'/></tesseralis>", {"6"}},
             {"<other><note name='7'/></other>", {}},
             {"<tesseralis/>", {}}}) {
        Note::s_read.clear();
        build(archive, text);
        archive.retrieve(0);
        EXPECT_TRUE(archive.IsEmpty());
        EXPECT_EQ(Note::s_read, read);
    }
    EXPECT_EQ(registry.GetObjects().size(), 5u) << "what was named behind is made, but not read";
}

TEST_F(ArchivedRegistry, WhatAnObjectThrowsLeavesTheRest)
{
    build(archive, "<tesseralis><note name='a'/><note name='b'>bad</note><note name='c'/></tesseralis>");
    EXPECT_EQ(messageOf([&] { archive.retrieve(0); }), "Bad!");
    EXPECT_EQ(Note::s_read, Texts({"a"}));
    EXPECT_EQ(textOf(archive), "<tesseralis><note name=\"c\"></note></tesseralis>");
}
