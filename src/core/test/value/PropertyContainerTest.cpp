#include "math/Vector.h"
#include "plugin/Session.h"
#include "support/Testing.h"
#include "value/Archive.h"
#include "value/MemorySerializer.h"
#include "value/Variant.h"

namespace {
/// What a container's observer heard, a word each: +x added, -x removed, x changed, y<x renamed.
std::string wordsOf(Recorder const & recorder)
{
    std::string words;
    for (std::size_t i = 0; i < recorder.GetCount(); ++i) {
        words += words.empty() ? "" : " ";
        if (auto const * const renamed = recorder.GetAs<PropertyContainerRenameEvent>(i)) {
            words += renamed->GetCurrentName() + "<" + renamed->GetPreviousName();
        } else if (auto const * const about = dynamic_cast<PropertyContainerPropertyEvent const *>(&recorder.Get(i))) {
            words += recorder.GetAs<PropertyContainerAdditionEvent>(i) ? "+" : "";
            words += recorder.GetAs<PropertyContainerRemovalEvent>(i) ? "-" : "";
            words += about->GetName();
        }
    }
    return words;
}

std::string namesOf(PropertyContainer & container)
{
    std::string names;
    for (PropertyContainerIterator i(container); !i.IsAtEnd(); ++i) {
        names += i.GetName();
    }
    return names;
}

class PropertyContainers : public testing::Test
{
protected:
    PropertyContainers() { registerObjectTypes(); }
    ~PropertyContainers() override { Tesseralis::Get().clearObjects(); }

    PropertyContainer container{"c", ObjectAttribute::Registered};
    PropertyContainer const & constant = container;
    Recorder recorder{container};
};
} // namespace

TEST_F(PropertyContainers, CreateOnWriteAndThrowOnRead)
{
    EXPECT_EQ(messageOf([&] { constant.GetProperty("x"); }), "A property named 'x' does not exist!");
    Variant const fallback(3);
    EXPECT_EQ(&constant.GetProperty("x", fallback), &fallback);
    EXPECT_FALSE(container.GetProperty("x").IsDefined());
    container.GetProperty("x") = 1;
    EXPECT_EQ(wordsOf(recorder), "+x x");
    EXPECT_EQ(static_cast<int>(constant.GetProperty("x", fallback)), 1);
}

TEST_F(PropertyContainers, KeepCreationOrderAndTellWhatHappens)
{
    for (char const * name : {"a", "b", "c"}) {
        container.addProperty(name, 1);
    }
    container.SetPropertyDescription("a", "first");
    recorder.clear();
    std::string seen;
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (auto const * const removal = dynamic_cast<PropertyContainerRemovalEvent const *>(&event)) {
            seen += constant.GetProperty(removal->GetName(), "?").operator std::string();
        }
    });
    container.addProperty("a", 2);
    EXPECT_EQ(namesOf(container), "bca");
    EXPECT_FALSE(container.HasPropertyDescription("a"));
    container.renameProperty("d", "b");
    for (auto const & [current, previous] : {std::pair("d", "d"), {"c", "a"}, {"e", "nothing"}}) {
        container.renameProperty(current, previous);
    }
    container.addProperty("c", container.GetProperty("a"));
    container.removeProperty("missing");
    EXPECT_EQ(namesOf(container), "dac");
    container.clearProperties();
    EXPECT_EQ(wordsOf(recorder), "-a +a d<b -c +c -missing -d -a -c");
    EXPECT_EQ(seen, "11?122") << "a value was gone before its removal was told";
    EXPECT_EQ(container.GetPropertyCount(), 0u);

    container.addProperty("a", 1);
    Recorder maker(container.GetProperty("a"));
    maker.SetReaction([&](Observable const &, ObservableEvent const &) { container.GetProperty("a"); });
    container.addProperty("a", 2); // is made again while it is replaced
    EXPECT_EQ(container.GetPropertyCount(), 1u);
    EXPECT_EQ(static_cast<int>(container.GetProperty("a")), 2);
}

TEST_F(PropertyContainers, ReportAChangeDeepInsideAValueOnceUnderTheRightName)
{
    container.addProperty("other", 1);
    container.GetProperty("tree")["branch"][3]["leaf"] = 1;
    Variant & leaf = container.GetProperty("tree")["branch"][3]["leaf"];
    Recorder const onRegistry(Tesseralis::Get());
    recorder.clear();
    leaf = 2;
    EXPECT_EQ(wordsOf(recorder), "tree");
    EXPECT_EQ(onRegistry.GetCountOf<TesseralisChangeEvent>(), 1u);
    EXPECT_EQ(PropertyContainer::GetPropertyContainer(&container.GetProperty("tree")), &container);
    EXPECT_EQ(container.GetPropertyName(&container.GetProperty("tree")), "tree");
    Variant const copy(container.GetProperty("tree"));
    EXPECT_EQ(PropertyContainer::GetPropertyContainer(&copy), nullptr);
    EXPECT_FALSE(container.HasProperty(&leaf));
}

TEST_F(PropertyContainers, FoldChangesOfOneBracketByName)
{
    container.addProperty("a", 1);
    container.addProperty("b", 1);
    recorder.clear();
    container.beginModification(new PropertyContainerEvent);
    for (char const * name : {"a", "a", "b"}) {
        container.GetProperty(name) = container.GetProperty(name).operator int() + 1;
    }
    container.endModification();
    EXPECT_EQ(wordsOf(recorder), "a b");
}

TEST_F(PropertyContainers, FlagsAndDescriptionsOfMissingPropertiesAreDefaults)
{
    container.addProperty("a", 1);
    recorder.clear();
    container.SetPropertyFlags("a", 6, true);
    container.SetPropertyFlags("a", 2, false);
    EXPECT_EQ(container.GetPropertyFlags("a"), 4u);
    EXPECT_TRUE(container.HasPropertyFlags("a", 4) && !container.HasPropertyFlags("a", 6));
    container.SetPropertyFlags("x", 1, true);
    container.SetPropertyDescription("x", "text");
    container.SetPropertyLink("x", PropertyContainerLink());
    container.SetPropertyExpression("x", PropertyContainerExpression());
    EXPECT_EQ(wordsOf(recorder), "a a");
    EXPECT_FALSE(container.HasPropertyFlags("x", 0) || container.HasPropertyLink("x") ||
                 container.HasPropertyExpression("x"));
    EXPECT_EQ(container.GetPropertyFlags("x"), 0u);
    EXPECT_EQ(container.GetPropertyDescription("x"), "");
    EXPECT_FALSE(container.GetPropertyLink("x").IsValid() || container.GetPropertyExpression("x").IsValid());
}

TEST_F(PropertyContainers, CopyValuesWithTypesAndLimitsOnly)
{
    container.addProperty("a", Variant::TypeInteger(5, 0, 10));
    container.addProperty("b", "text");
    container.SetPropertyFlags("a", 1, true);
    PropertyContainer target("target", 0);
    target.addProperty("own", 1);
    target.addProperty("b", 7);
    target.copyProperties(container);
    target.copyProperties(target);
    EXPECT_EQ(namesOf(target), "ownba");
    EXPECT_EQ(target.GetProperty("b"), Variant("text"));
    EXPECT_EQ(target.GetProperty("a").GetMaximum(), Variant(10));
    EXPECT_EQ(target.GetPropertyFlags("a"), 0u);
}

TEST_F(PropertyContainers, GoToAnArchiveAndComeBackWithValuesFlagsAndLinks)
{
    auto * const session = new Session("s", ObjectAttribute::All);
    auto * const other = new Session("other", ObjectAttribute::All);
    session->addProperty("limited", Variant::TypeFloat(0.5f, 0, 1));
    session->addProperty("secret", Vector(1, 2, 3));
    session->SetPropertyFlags("secret", PropertyFlag::Hidden, true);
    session->addProperty("undefined", Variant());
    session->GetProperty("list")[1] = "x";
    session->SetPropertyLink("limited", PropertyContainerLink(other, "target"));

    Archive structure(ArchiveFlag::WithoutValues);
    structure.store();
    ArchiveElement element = ArchiveElement(structure).retrieve("session");
    EXPECT_FALSE(element.IsRetrievable("property"));
    EXPECT_TRUE(element.IsRetrievable("link"));

    Archive archive;
    archive.store();
    Archive const copy(archive);
    Tesseralis::Get().clearObjects();
    archive.retrieve(0);
    auto * const again = dynamic_cast<Session *>(Tesseralis::Get().GetObject("session", "s"));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(namesOf(*again), "limitedsecretundefinedlist");
    EXPECT_TRUE(again->HasPropertyFlags("secret", PropertyFlag::Hidden));
    EXPECT_EQ(again->GetPropertyLink("limited").GetPropertyName(), "target");
    EXPECT_FALSE(again->GetProperty("list")[0].IsDefined());
    Archive second;
    second.store();
    EXPECT_EQ(ArchiveElement(second), ArchiveElement(const_cast<Archive &>(copy)));
}

TEST_F(PropertyContainers, AHiddenFlagStaysWhereTheDocumentDoesNotHideTheProperty)
{
    container.addProperty("a", 1);
    container.SetPropertyFlags("a", PropertyFlag::Hidden, true);
    Archive archive;
    MemorySerializer().load(archive, "<c><property name='a' type='string'>new</property>"
                                     "<link name='a' container='nobody'/></c>");
    ArchiveElement element(archive);
    container.retrieve(element);
    EXPECT_EQ(container.GetProperty("a"), Variant("new"));
    EXPECT_TRUE(container.HasPropertyFlags("a", PropertyFlag::Hidden));
    EXPECT_FALSE(container.HasPropertyLink("a"));
}

TEST_F(PropertyContainers, SubclassesOfAHostAreAnnouncedWithTheirOwnType)
{
    class HostSession : public Session
    {
    public:
        explicit HostSession(std::string const & name) : Session(static_cast<Session *>(nullptr))
        {
            constructSession(name, ObjectAttribute::Registered);
        }
        ~HostSession() override { destroySession(); }
        std::string GetObjectTypeName() const override { return "hostsession"; }
    };

    Texts types;
    Recorder onRegistry(Tesseralis::Get());
    onRegistry.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (auto const * const about = dynamic_cast<TesseralisObjectEvent const *>(&event)) {
            types.push_back(about->GetObject()->GetObjectTypeName());
        }
    });
    {
        HostSession session("h");
        session.addProperty("a", 1);
    }
    EXPECT_EQ(types, Texts(4, "hostsession"));
}
