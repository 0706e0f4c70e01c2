#include "math/Vector.h"
#include "plugin/Host.h"
#include "support/Testing.h"
#include "value/Archive.h"
#include "value/PropertyContainer.h"
#include "value/Variant.h"

namespace {
/// A host that can be observed, whose language is a function.
class FunctionHost : public PropertyContainer, public Host
{
public:
    explicit FunctionHost(std::function<Variant()> function)
        : PropertyContainer("host", ObjectAttribute::Registered), m_function(std::move(function))
    {
    }
    ~FunctionHost() override { destroyPropertyContainer(); }

    Variant evaluate(std::string const &, Object *) const override
    {
        ++calls;
        return m_function();
    }
    mutable int calls = 0;

private:
    std::function<Variant()> m_function;
};

int toInt(Variant const & value)
{
    return value;
}

void link(PropertyContainer & container, std::string const & name, PropertyContainer & target,
          std::string const & targetName)
{
    container.SetPropertyLink(name, PropertyContainerLink(&target, targetName));
}

class PropertyLinks : public testing::Test
{
protected:
    PropertyContainer a{"a", ObjectAttribute::Registered};
    PropertyContainer b{"b", ObjectAttribute::Registered};
    PropertyContainer c{"c", ObjectAttribute::Registered};
};

using PropertyExpressions = PropertyLinks;
} // namespace

TEST_F(PropertyLinks, TheTargetsValueWinsAndChangesGoBothWays)
{
    a.addProperty("x", 1);
    b.addProperty("y", 2);
    link(a, "x", b, "y");
    EXPECT_EQ(toInt(a.GetProperty("x")), 2);
    a.GetProperty("x") = 3;
    EXPECT_EQ(toInt(b.GetProperty("y")), 3);
    b.GetProperty("y") = 4;
    EXPECT_EQ(toInt(a.GetProperty("x")), 4);
    EXPECT_EQ(a.GetPropertyLink("x"), PropertyContainerLink(&b, "y"));
    EXPECT_FALSE(b.HasPropertyLink("y"));

    b.renameProperty("z", "y");
    EXPECT_EQ(a.GetPropertyLink("x").GetPropertyName(), "z");
    Recorder recorder(a);
    link(a, "x", c, "new");
    EXPECT_EQ(recorder.GetCountOf<PropertyContainerChangeEvent>(), 2u) << "the old link goes with an event of its own";
    EXPECT_EQ(toInt(c.GetProperty("new")), 4);
    b.GetProperty("z") = 9;
    EXPECT_EQ(toInt(a.GetProperty("x")), 4);
    a.SetPropertyLink("x", PropertyContainerLink());
    EXPECT_FALSE(a.HasPropertyLink("x"));
    link(a, "missing", b, "missing");
    EXPECT_FALSE(a.GetProperty("missing").IsDefined());
    EXPECT_TRUE(a.HasPropertyLink("missing"));
}

TEST_F(PropertyLinks, ChainsAndRingsOfMixedTypesComeToRest)
{
    a.addProperty("text", "1");
    link(a, "text", a, "text");
    EXPECT_FALSE(a.HasPropertyLink("text"));
    b.addProperty("number", Variant::TypeFloat(1.0f));
    c.addProperty("limited", Variant::TypeInteger(1, 0, 10));
    link(a, "text", b, "number");
    link(b, "number", c, "limited");
    link(c, "limited", a, "text");

    a.GetProperty("text") = "7.0";
    EXPECT_EQ(toInt(c.GetProperty("limited")), 7);
    EXPECT_EQ(a.GetProperty("text").operator std::string(), "7");
    EXPECT_EQ(a.GetPropertyDescription("text"), "");

    EXPECT_EQ(logOf([&] { b.GetProperty("number") = 20.0f; }),
              "[a] Unable to assign value of a.text to c.limited: \n"
              "Unable to assign an integer value of 20 to this variant!\n\n"
              "[b] Unable to assign value of b.number to c.limited: \n"
              "Unable to assign an integer value of 20 to this variant!\n\n");
    EXPECT_EQ(toInt(c.GetProperty("limited")), 7);
    EXPECT_EQ(a.GetProperty("text"), Variant("20")) << "the other peer still gets the value";

    Vector const notANumber(std::numeric_limits<float>::quiet_NaN(), 0, 0);
    a.addProperty("v", Vector());
    link(a, "v", b, "v");
    a.GetProperty("v") = notANumber;
    EXPECT_FALSE(b.GetProperty("v") == b.GetProperty("v"));

    a.GetProperty("list")[0] = 1;
    b.addProperty("list", Variant::TypeMap());
    Recorder recorder(b);
    link(a, "list", b, "list");
    b.GetProperty("list")["0"] = 2;
    EXPECT_EQ(toInt(a.GetProperty("list")[0]), 2);
    EXPECT_LT(recorder.GetCount(), 50u);
    for (int i = 0; i < 4; ++i) {
        c.addProperty("map" + std::to_string(i), Variant::TypeMap());
        link(c, "map" + std::to_string(i), a, "list");
    }
    a.GetProperty("list")[0] = 3;
    EXPECT_EQ(toInt(c.GetProperty("map3")["0"]), 3);
}

TEST_F(PropertyLinks, AnEndlessChainEndsInTheLogAndNotInTheStack)
{
    for (int i = 0; i < 20000; ++i) {
        link(a, std::to_string(i), a, std::to_string(i + 1));
    }
    EXPECT_NE(logOf([&] { a.GetProperty("0") = 1; }).find("chain of links"), std::string::npos);
    EXPECT_EQ(toInt(a.GetProperty("500")), 1);
}

TEST_F(PropertyLinks, ALinkThatCannotBeginIsLoggedAndNotMade)
{
    a.addProperty("x", Variant::TypeInteger(0, 0, 1));
    b.addProperty("y", 5);
    EXPECT_EQ(logOf([&] { link(a, "x", b, "y"); }),
              "[a] Unable to link 'a.x' to 'b.y: \nUnable to assign an integer value of 5 to this variant!\n\n");
    EXPECT_FALSE(a.HasPropertyLink("x"));
}

TEST_F(PropertyLinks, DescriptionsFollowTheLinksAndDyingPropertiesLeaveNone)
{
    auto d = std::make_unique<PropertyContainer>("d", 0u);
    link(a, "x", b, "x");
    link(b, "x", *d, "x");
    d->SetPropertyDescription("x", "from d");
    EXPECT_EQ(a.GetPropertyDescription("x"), "from d");
    d.reset();
    EXPECT_FALSE(b.HasPropertyLink("x"));
    b.removeProperty("x");
    EXPECT_FALSE(a.HasPropertyLink("x"));
    a.GetProperty("x") = 1;
}

TEST_F(PropertyExpressions, FireWhenATriggerChangesAndNotBefore)
{
    a.addProperty("x", 2);
    b.addProperty("double", 0);
    auto host = std::make_unique<FunctionHost>([&] { return Variant(2 * toInt(a.GetProperty("x"))); });
    {
        PropertyContainerExpression expression(host.get(), "2 * x");
        a.GetProperty("x").addObserver(&expression);
        b.SetPropertyExpression("double", expression);
    }
    EXPECT_EQ(toInt(b.GetProperty("double")), 0);
    a.GetProperty("x") = 3;
    EXPECT_EQ(toInt(b.GetProperty("double")), 6);
    EXPECT_EQ(host->calls, 1);

    PropertyContainerExpression copy = b.GetPropertyExpression("double");
    EXPECT_EQ(copy, PropertyContainerExpression(host.get(), "2 * x"));
    a.GetProperty("x") = 4;
    EXPECT_EQ(host->calls, 2) << "a copy updates nothing of its own";
    b.removeProperty("double");
    a.GetProperty("x") = 5;
    EXPECT_EQ(host->calls, 2);
    host.reset();
    EXPECT_FALSE(copy.IsValid());
    EXPECT_FALSE(copy.evaluate(nullptr).IsDefined());
}

TEST_F(PropertyExpressions, AFailureIsLoggedOnceAndADeadHostIsForgotten)
{
    a.addProperty("x", 0);
    b.addProperty("y", 7);
    auto host = std::make_unique<FunctionHost>([]() -> Variant { throw Exception("no such thing"); });
    PropertyContainerExpression expression(host.get(), "text");
    a.GetProperty("x").addObserver(&expression);
    b.SetPropertyExpression("y", expression);
    std::string const log = logOf([&] {
        a.GetProperty("x") = 1;
        a.GetProperty("x") = 2;
        host.reset();
    });
    EXPECT_EQ(log, "[b] Unable to assign value of expression to b.y: \nno such thing\n\n");
    EXPECT_FALSE(b.GetPropertyExpression("y").IsValid());
    EXPECT_EQ(toInt(b.GetProperty("y")), 7);
}

TEST_F(PropertyExpressions, DoNotFireWhileTheirContainerDies)
{
    FunctionHost host([] { return Variant(1); });
    {
        PropertyContainer dying("d", ObjectAttribute::Registered);
        dying.addProperty("x", 0);
        dying.addProperty("y", 0);
        PropertyContainerExpression expression(&host, "text");
        dying.GetProperty("x").addObserver(&expression);
        dying.SetPropertyExpression("y", expression);
    }
    EXPECT_EQ(host.calls, 0);
}

TEST_F(PropertyExpressions, ComeBackFromAnArchiveWithTheirTriggers)
{
    a.addProperty("x", 1);
    b.addProperty("y", 0);
    FunctionHost host([&] { return a.GetProperty("x"); });
    PropertyContainerExpression expression(&host, "x");
    a.GetProperty("x").addObserver(&expression);
    b.SetPropertyExpression("y", expression);
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("b");
    b.store(element);
    b.clearProperties();
    b.retrieve(element);
    EXPECT_EQ(b.GetPropertyExpression("y"), PropertyContainerExpression(&host, "x"));
    a.GetProperty("x") = 5;
    EXPECT_EQ(toInt(b.GetProperty("y")), 5);
}

TEST_F(PropertyExpressions, AreNamedWhereTheyCannotBeStored)
{
    class CopiedHost : public Object, public Host
    {
    public:
        using Object::Object;
        Variant evaluate(std::string const &, Object *) const override { return Variant(); }
    };
    CopiedHost const registered("host", ObjectAttribute::Registered);
    CopiedHost copy(registered);
    a.addProperty("x", 0);
    a.SetPropertyExpression("x", PropertyContainerExpression(&copy, "text"));
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("a");
    EXPECT_EQ(messageOf([&] { a.store(element); }),
              "Unable to store the property 'x' of 'a': The specified object does not exist!");
}

TEST_F(PropertyExpressions, MayGoWithOrWithoutTheirPropertyWhileTheyAreEvaluated)
{
    a.addProperty("x", 0);
    b.addProperty("y", 7);
    b.addProperty("z", 7);
    FunctionHost host([&] {
        b.SetPropertyExpression("y", PropertyContainerExpression());
        b.removeProperty("z");
        return Variant(8);
    });
    PropertyContainerExpression expression(&host, "text");
    a.GetProperty("x").addObserver(&expression);
    b.SetPropertyExpression("y", expression);
    b.SetPropertyExpression("z", expression);
    a.GetProperty("x") = 1;
    EXPECT_FALSE(b.HasPropertyExpression("y") || b.HasProperty("z"));
    EXPECT_EQ(toInt(b.GetProperty("y")), 7);
}
