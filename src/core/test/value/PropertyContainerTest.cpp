#include "math/Vector.h"
#include "object/Tesseralis.h"
#include "plugin/Session.h"
#include "support/Messages.h"
#include "support/Recorder.h"
#include "value/Archive.h"
#include "value/Variant.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using namespace tesseralis;
using namespace tesseralis::test;

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
            words += recorder.GetAs<PropertyContainerAdditionEvent>(i)  ? "+"
                     : recorder.GetAs<PropertyContainerRemovalEvent>(i) ? "-"
                                                                        : "";
            words += about->GetName();
        } else {
            words += "?";
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
};
} // namespace

TEST_F(PropertyContainers, CreateOnWriteAndThrowOnRead)
{
    PropertyContainer container("c", 0);
    Recorder recorder(container);
    PropertyContainer const & constant = container;
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
    PropertyContainer container("c", 0);
    for (char const * name : {"a", "b", "c"}) {
        container.addProperty(name, 1);
    }
    container.SetPropertyDescription("a", "first");
    Recorder recorder(container);
    std::string seen;
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (auto const * const removal = dynamic_cast<PropertyContainerRemovalEvent const *>(&event)) {
            seen += std::as_const(container).GetProperty(removal->GetName(), "?").operator std::string();
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
}

TEST_F(PropertyContainers, APropertyThatIsMadeAgainWhileItIsReplacedExistsOnce)
{
    PropertyContainer container("c", 0);
    container.addProperty("a", 1);
    Recorder recorder(container.GetProperty("a"));
    recorder.SetReaction([&](Observable const &, ObservableEvent const &) { container.GetProperty("a"); });
    container.addProperty("a", 2);
    EXPECT_EQ(container.GetPropertyCount(), 1u);
    EXPECT_EQ(static_cast<int>(container.GetProperty("a")), 2);
}

TEST_F(PropertyContainers, ReportAChangeDeepInsideAValueOnceUnderTheRightName)
{
    PropertyContainer container("c", ObjectAttribute::Registered);
    container.addProperty("other", 1);
    container.GetProperty("tree")["branch"][3]["leaf"] = 1;
    Variant & leaf = container.GetProperty("tree")["branch"][3]["leaf"];
    Recorder recorder(container);
    Recorder onRegistry(Tesseralis::Get());
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
    PropertyContainer container("c", 0);
    container.addProperty("a", 1);
    container.addProperty("b", 1);
    Recorder recorder(container);
    container.beginModification(new PropertyContainerEvent);
    for (int i = 2; i < 5; ++i) {
        container.GetProperty("a") = i;
    }
    container.GetProperty("b") = 2;
    EXPECT_EQ(recorder.GetCount(), 0u);
    container.endModification();
    EXPECT_EQ(wordsOf(recorder), "? a b");
}

TEST_F(PropertyContainers, FlagsAndDescriptionsOfMissingPropertiesAreDefaults)
{
    PropertyContainer container("c", 0);
    container.addProperty("a", 1);
    Recorder recorder(container);
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
    PropertyContainer source("source", 0);
    source.addProperty("a", Variant::TypeInteger(5, 0, 10));
    source.addProperty("b", "text");
    source.SetPropertyFlags("a", 1, true);
    PropertyContainer target("target", 0);
    target.addProperty("own", 1);
    target.addProperty("b", 7);
    target.copyProperties(source);
    target.copyProperties(target);
    EXPECT_EQ(namesOf(target), "ownba");
    EXPECT_EQ(target.GetProperty("b").GetType(), Variant::Type::String);
    EXPECT_EQ(static_cast<int>(target.GetProperty("a").GetMaximum()), 10);
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
    EXPECT_TRUE(again->HasAttribute(ObjectAttribute::All));
    EXPECT_EQ(again->GetPropertyLink("limited").GetPropertyName(), "target");
    EXPECT_FALSE(again->GetProperty("list")[0].IsDefined());
    Archive second;
    second.store();
    EXPECT_EQ(ArchiveElement(second), ArchiveElement(const_cast<Archive &>(copy)));
}

TEST_F(PropertyContainers, AHiddenFlagStaysWhereTheDocumentDoesNotHideTheProperty)
{
    Session session("s", ObjectAttribute::Registered);
    session.addProperty("a", 1);
    session.SetPropertyFlags("a", PropertyFlag::Hidden, true);
    Archive archive;
    ArchiveElement root = ArchiveElement(archive).store("tesseralis");
    ArchiveElement element = root.store("session");
    ArchiveElement property = element.store("property");
    property.SetAttribute("name", "a");
    property.SetAttribute("type", "string");
    property.SetValue("new");
    ArchiveElement link = element.store("link");
    link.SetAttribute("name", "a");
    link.SetAttribute("container", "nobody");
    session.retrieve(element);
    EXPECT_EQ(session.GetProperty("a"), Variant("new"));
    EXPECT_TRUE(session.HasPropertyFlags("a", PropertyFlag::Hidden));
    EXPECT_FALSE(session.HasPropertyLink("a"));
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

    std::vector<std::string> types;
    Recorder recorder(Tesseralis::Get());
    recorder.SetReaction([&](Observable const &, ObservableEvent const & event) {
        if (auto const * const about = dynamic_cast<TesseralisObjectEvent const *>(&event)) {
            types.push_back(about->GetObject()->GetObjectTypeName());
        }
    });
    {
        HostSession session("h");
        session.addProperty("a", 1);
    }
    EXPECT_EQ(types, std::vector<std::string>({"hostsession", "hostsession", "hostsession", "hostsession"}));
    EXPECT_EQ(recorder.GetCountOf<PropertyContainerRemovalEvent>(), 0u);
}
