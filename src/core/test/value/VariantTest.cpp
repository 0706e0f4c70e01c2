#include "value/Variant.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "support/Messages.h"
#include "support/Recorder.h"
#include "support/Values.h"
#include "value/Archive.h"
#include "value/VariantNumberValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <sstream>
#include <tuple>
#include <utility>
#include <vector>

using namespace tesseralis;
using namespace tesseralis::test;

TEST(Variant, NamesItsTypes)
{
    for (int number = 0; number <= 14; ++number) {
        auto const type = Variant::Type(number);
        EXPECT_EQ(Variant::GetTypeFromName(Variant::GetNameFromType(type)), type);
        EXPECT_EQ(Variant(type).GetType(), type == Variant::Type::Handle ? Variant::Type::Undefined : type);
    }
    for (char const * name : {"Integer", "", "int", "integer "}) {
        EXPECT_EQ(Variant::GetTypeFromName(name), Variant::Type::Undefined) << name;
    }
    for (int number : {-1, 15}) {
        EXPECT_FALSE(Variant(Variant::Type(number)).IsDefined());
        EXPECT_EQ(Variant::GetNameFromType(Variant::Type(number)), "");
    }
}

TEST(Variant, KeepsItsTypeWhenAssignedAPlainValueAndLosesItToAVariant)
{
    Variant variant;
    variant = 5;
    EXPECT_EQ(variant.GetType(), Variant::Type::Integer);
    EXPECT_EQ(messageOf([&] { variant = 7.5f; }), notAssigned("a float value of '7.500000'"));
    EXPECT_EQ(variant, Variant(5));
    variant = 7.0f;
    variant = "8";
    EXPECT_EQ(variant.GetTypeName() + variant.operator std::string(), "integer8");
    variant.assign(9.0f);
    EXPECT_EQ(variant.GetTypeName() + variant.operator std::string(), "integer9");

    variant = Variant(0.5f, 0.0f, 1.0f);
    EXPECT_EQ(variant.GetTypeName() + variant.operator std::string(), "float0.5");
    EXPECT_EQ(variant.GetMaximum(), Variant(1));
    variant = Variant();
    EXPECT_FALSE(variant.IsDefined());
    variant.assign(Variant());
    EXPECT_FALSE(variant.IsDefined());
    variant.assign(Variant(3, 0, 4));
    EXPECT_EQ(variant.GetMaximum(), Variant(4));
    variant.assign(Variant());
    EXPECT_EQ(variant, Variant(3));
}

TEST(Variant, SendsOneEventForAChangeAndNoneForNothing)
{
    Variant variant = Variant(1, 0, 10);
    Recorder recorder(variant);
    Variant other = "7";
    std::pair<std::function<void()>, unsigned int> const steps[] = {
        {[&] { variant = 1; }, 1},
        {[&] { variant = Variant(2, 0, 10); }, 1},
        {[&] { variant = static_cast<Variant const &>(variant); }, 0},
        {[&] { variant.assign("2"); }, 0},
        {[&] { variant.assign("3"); }, 1},
        {[&] { variant.assign(Variant()); }, 0},
        {[&] { messageOf([&] { variant.assign(11); }); }, 0},
        {[&] { messageOf([&] { variant = "x"; }); }, 0},
        {[&] { variant.SetMinimum(4); }, 0},
        {[&] { messageOf([&] { variant.clear(); }); }, 0},
        {[&] { variant.SetMinimum(-1); }, 0},
        {[&] { variant.clear(); }, 1},
        {[&] { variant.require(Variant(0, -5, 5)); }, 0},
        {[&] { variant.require(Variant::TypeMap()); }, 1},
        {[&] { variant["a"] = 1; }, 1},
        {[&] { variant["a"]["b"]; }, 0},
        {[&] { variant.swap(variant); }, 0},
        {[&] { variant.swap(other); }, 1},
        {[&] { other.swap(variant); }, 0},
        {[&] { variant = Variant(); }, 1},
        {[&] { variant.clear(); }, 0},
        {[&] { variant[2]; }, 1},
    };
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        recorder.clear();
        messageOf(steps[i].first);
        EXPECT_EQ(recorder.GetCount(), steps[i].second) << "step " << i;
        EXPECT_EQ(recorder.GetCountOf<ObservableEvent>(), recorder.GetCount()) << "step " << i;
    }
}

TEST(Variant, HoldsItsValueInItsLimits)
{
    EXPECT_EQ(messageOf([] { Variant::TypeInteger(5, 10); }), notAssigned("an integer value of 0"));
    EXPECT_EQ(messageOf([] { Variant::TypeFloat(2.0f, -1.0f, 1.0f); }), notAssigned("a float value of '2.000000'"));
    EXPECT_EQ(Variant::TypeInteger(7, 5, 10), Variant(7));
    EXPECT_EQ(messageOf([] { Variant::TypeInteger(7, 5, 10).clear(); }), notAssigned("an integer value of 0"));
    EXPECT_EQ(Variant(1).GetMinimum(), Variant("-2147483648"));
    EXPECT_EQ(Variant(1.0f).GetMaximum().operator float(), std::numeric_limits<float>::max());
    EXPECT_FALSE(Variant("1").GetMinimum().IsDefined());
    EXPECT_FALSE(Variant().GetFilter().IsDefined());
    Variant limited(0.0f, 0.0f, 1.0f);
    for (float value : {NAN, INFINITY, 1.5f}) {
        EXPECT_NE(messageOf([&] { limited = value; }), "nothing was thrown");
        EXPECT_EQ(limited, Variant(0.0f));
    }

    struct Row
    {
        Variant minimum;
        Variant maximum;
        int expected[3]; // minimum, maximum, value
    };
    Row const rows[] = {
        {20, Variant(), {20, 10, 20}}, {"4", "4.0", {4, 10, 5}},  {Variant(), -3.0f, {0, -3, 0}},
        {"x", Vector(), {0, 10, 5}},   {Variant(), 3, {0, 3, 3}}, {2.5f, Variant::TypeArray(), {0, 10, 5}},
    };
    for (auto const & [minimum, maximum, expected] : rows) {
        Variant variant(5, 0, 10);
        variant.SetMinimum(minimum);
        variant.SetMaximum(maximum);
        EXPECT_EQ(variant.GetMinimum(), Variant(expected[0]));
        EXPECT_EQ(variant.GetMaximum(), Variant(expected[1]));
        EXPECT_EQ(variant, Variant(expected[2]));
    }
}

TEST(Variant, ComparesByTheLeftType)
{
    for (auto const & [left, right] : {std::pair<Variant, Variant>(Variant(), Variant()),
                                       {5, "5"},
                                       {"5", 5},
                                       {true, 1},
                                       {5, Variant(5, 0, 9)},
                                       {5, " 5"}}) {
        EXPECT_TRUE(left == right);
    }
    for (auto const & [left, right] :
         {std::pair<Variant, Variant>(Variant(), 0), {0, Variant()}, {1.5f, 1}, {1, 1.5f}, {" 5", 5}}) {
        EXPECT_TRUE(left != right);
    }
}

TEST(Variant, ThrowsWhereAnUndefinedOneIsRead)
{
    Variant const variant;
    EXPECT_EQ(messageOf([&] { std::ostringstream() << variant; }), notRetrieved("a string value"));
    EXPECT_EQ(messageOf([&] { variant.operator bool(); }), notRetrieved("a boolean value"));
    EXPECT_EQ(messageOf([&] { variant.operator int(); }), notRetrieved("an integer value"));
    EXPECT_EQ(messageOf([&] { variant.operator float(); }), notRetrieved("a float value"));
    EXPECT_EQ(messageOf([&] { variant.operator Vector(); }), notRetrieved("a vector value"));
    EXPECT_EQ(messageOf([&] { variant[3]; }), noElement("3"));
    EXPECT_EQ(messageOf([&] { variant["k"]; }), noElement("k"));
    EXPECT_EQ(messageOf([] { Variant(5)[3]; }), noElement("3"));
    EXPECT_EQ(messageOf([] { Variant(5)["k"]; }), noElement("k"));
}

TEST(Variant, MeetsARequirementAndKeepsWhatFits)
{
    std::tuple<Variant, Variant, std::string> const rows[] = {
        {Variant(), Variant(1, 0, 2), "integer1"}, {"3", Variant(1, 0, 2), "integer1"},
        {"1", Variant(0, 0, 2), "string1"},        {"x", Variant(), "stringx"},
        {2.0f, Variant::TypeString(), "float2"},   {5, Variant::TypeVector(), "vector(0;0;0)"},
        {1.5f, Variant(0, 0, 2), "integer0"},
    };
    for (auto const & [value, requirement, expected] : rows) {
        Variant variant = value;
        EXPECT_EQ(&variant.require(requirement), &variant);
        EXPECT_EQ(variant.GetTypeName() + variant.operator std::string(), expected);
    }
}

TEST(Variant, SwapsPayloadsWithTheirEvents)
{
    Variant left;
    Variant & element = left["k"];
    Variant right = "text";
    left.swap(right);
    Recorder leftRecorder(left);
    Recorder rightRecorder(right);
    element = 2;
    EXPECT_EQ(left, Variant("text"));
    EXPECT_EQ(right["k"], Variant(2));
    EXPECT_EQ(leftRecorder.GetCount(), 0u);
    EXPECT_EQ(rightRecorder.GetCount(), 1u);
}

TEST(Variant, BecomesUndefinedWhenItsPayloadIsDestroyedFromOutside)
{
    struct Access : Variant
    {
        using Variant::GetValue;
        using Variant::SetValue;
    };
    Access variant;
    VariantIntegerValue const value(5, 0, 9);
    Recorder recorder(variant);
    variant.SetValue(&value);
    variant.SetValue(&value);
    variant.SetValue(nullptr);
    EXPECT_EQ(recorder.GetCount(), 2u);
    EXPECT_EQ(variant.GetMaximum(), Variant(9));
    delete variant.GetValue();
    EXPECT_FALSE(variant.IsDefined());
    EXPECT_EQ(recorder.GetCount(), 2u);
}

TEST(Variant, TellsItsEndWhileItIsWhole)
{
    std::string last;
    Recorder recorder;
    auto variant = std::make_unique<Variant>("text");
    variant->addObserver(&recorder);
    recorder.SetReaction([&](Observable const & observable, ObservableEvent const &) {
        last = dynamic_cast<Variant const &>(observable).operator std::string();
    });
    variant.reset();
    EXPECT_EQ(last, "text");
    EXPECT_EQ(recorder.GetCountOf<ObservableDestructionEvent>(), 1u);
}

namespace {
Variant storedAndRetrieved(Variant value)
{
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("property");
    value.store(element);
    Variant result = "replaced";
    Recorder recorder(result);
    result.retrieve(element);
    EXPECT_EQ(recorder.GetCount(), 1u);
    return result;
}
} // namespace

TEST(VariantArchive, WritesTypeLimitsTextAndElements)
{
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("property");
    Variant(5).store(element);
    EXPECT_EQ(element.GetValue(), "5");
    std::vector<std::string> attributes;
    for (ArchiveElementAttributeIterator i(element); !i.IsAtEnd(); ++i) {
        attributes.push_back(i.GetName() + "=" + *i);
    }
    EXPECT_EQ(attributes, (std::vector<std::string>{"type=integer", "minimum=-2147483648", "maximum=2147483647"}));

    Variant map;
    map["b"] = 1.5f;
    map["a"][1] = "x";
    ArchiveElement tree = ArchiveElement(archive).store("property");
    map.store(tree);
    EXPECT_EQ(tree.GetValue(), "[2]");
    for (char const * expected : {"b1.5", "a[2]"}) {
        ArchiveElement const child = tree.retrieve("value");
        EXPECT_EQ(child.GetAttribute("index") + child.GetValue(), expected);
    }

    ArchiveElement empty = ArchiveElement(archive).store("property");
    Variant().store(empty);
    EXPECT_EQ(empty.GetAttribute("type"), "");
}

TEST(VariantArchive, ReadsBackWhatItWrote)
{
    Variant tree;
    tree["limited"] = Variant(0.25f, 0.0f, 0.5f);
    tree["nested"][3]["deep"] = Vector(1, 2, 3);
    tree["option"] = option({"a", 2});
    tree["option"] = "2";
    tree["filename"] = Variant::TypeFilename("a;b", "*.txt");
    EXPECT_EQ(storedAndRetrieved(tree).GetJSON(false), tree.GetJSON(false));
    EXPECT_FALSE(storedAndRetrieved(Variant()).IsDefined());
}

TEST(VariantArchive, ReadsBackWhatHasNoNumberOrNoText)
{
    Matrix matrix;
    matrix(1, 2) = -INFINITY;
    for (Variant const & value : {Variant(INFINITY), Variant(-NAN), Variant(INFINITY, 0.0f, INFINITY), Variant(matrix),
                                  Variant(Vector(NAN, 0, -INFINITY)), Variant(Quaternion(Vector(), -NAN))}) {
        EXPECT_EQ(storedAndRetrieved(value).operator std::string(), value.operator std::string());
    }
    EXPECT_EQ(storedAndRetrieved(Variant(1.0f, 0.0f, INFINITY)).GetMaximum().operator float(), INFINITY);
    EXPECT_EQ(messageOf([] { Variant(1.0f, 0.0f, 2.0f) = "inf"; }),
              "Unable to assign a string value of 'inf' to this variant!");

    Variant choice = Variant::TypeOption();
    EXPECT_EQ(storedAndRetrieved(choice).GetSize(), 0u);
    choice[0];
    choice[2] = "b";
    EXPECT_FALSE(storedAndRetrieved(choice)[0].IsDefined());
    choice.assign("b");
    Variant const result = storedAndRetrieved(choice);
    EXPECT_EQ(result.GetSize(), 3u);
    EXPECT_EQ(result, Variant("b"));
}

TEST(VariantArchive, RefusesWhatDoesNotFitAndLetsNoShortDocumentAskForMuch)
{
    struct Row
    {
        std::string type;
        std::string text;
        std::vector<std::string> indices;
        std::string expected; // the result or the message
    };
    std::string const tooFar = noElement("4000000");
    Row const rows[] = {
        {"integer", "x", {}, notAssigned("a string value of 'x'")},
        {"Integer", "5", {}, "undefined"},
        {"array", "[9]", {"2", "0"}, "[3]"},
        {"array", "", {"1"}, "[2]"},
        {"array", "", {"2"}, "Unable to retrieve a Variant with index '2' from this variant!"},
        {"float", "inf", {}, "inf"},
        {"array", "", {"4000000"}, tooFar},
        {"filename", "", {"4000000"}, tooFar},
        {"array", "", {"4294967295"}, noElement("4294967295")},
        {"array", "", {"-1"}, noElement("-1")},
        {"map", "", {"4000000", "4000000"}, "[1]"},
        {"vector", "(1;2;3)", {"x"}, noElement("x")},
    };
    for (auto const & [type, text, indices, expected] : rows) {
        Archive archive;
        ArchiveElement element = ArchiveElement(archive).store("property");
        element.SetAttribute("type", type);
        element.SetValue(text);
        for (std::string const & index : indices) {
            element.store("value").SetAttribute("index", index);
        }
        Variant variant(7, 0, 9);
        Recorder recorder(variant);
        std::string const message = messageOf([&] { variant.retrieve(element); });
        if (message == "nothing was thrown") {
            EXPECT_EQ(variant.IsDefined() ? variant.operator std::string() : "undefined", expected);
        } else {
            EXPECT_EQ(message, expected);
            EXPECT_EQ(variant.GetMaximum(), Variant(9));
            EXPECT_EQ(recorder.GetCount(), 0u);
        }
    }
}
