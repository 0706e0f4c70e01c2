#include "support/Values.h"
#include "value/Archive.h"
#include "value/MemorySerializer.h"
#include "value/VariantNumberValue.h"

#include <tuple>

namespace {
std::string describe(Variant const & variant)
{
    return variant.GetTypeName() + (variant.IsDefined() ? " " + variant.operator std::string() : "");
}
} // namespace

TEST(Variant, NamesItsTypes)
{
    for (int number = 0; number <= 14; ++number) {
        auto const type = Variant::Type(number);
        EXPECT_EQ(Variant::GetTypeFromName(Variant::GetNameFromType(type)), type);
        EXPECT_EQ(Variant(type).GetType(), type == Variant::Type::Handle ? Variant::Type::Undefined : type);
    }
    EXPECT_EQ(Variant::GetTypeFromName("Integer"), Variant::Type::Undefined);
    for (int number : {-1, 15}) {
        EXPECT_FALSE(Variant(Variant::Type(number)).IsDefined());
        EXPECT_EQ(Variant::GetNameFromType(Variant::Type(number)), "");
    }
}

TEST(Variant, KeepsItsTypeWhenAssignedAPlainValueAndLosesItToAVariant)
{
    Variant variant;
    variant = 5;
    EXPECT_EQ(messageOf([&] { variant = 7.5f; }), notAssigned("a float value of '7.500000'"));
    EXPECT_EQ(describe(variant), "integer 5");
    variant = 7.0f;
    variant = "8";
    EXPECT_EQ(describe(variant), "integer 8");
    variant.assign(9.0f);
    EXPECT_EQ(describe(variant), "integer 9");
    variant = Variant(0.5f, 0.0f, 1.0f);
    EXPECT_EQ(describe(variant), "float 0.5");
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

    std::tuple<Variant, Variant, Variant> const rows[] = {
        // what is set and the minimum, maximum and value after it
        {20, Variant(), array({20, 10, 20})},  {"4", "4.0", array({4, 10, 5})},
        {Variant(), -3.0f, array({0, -3, 0})}, {"x", Vector(), array({0, 10, 5})},
        {Variant(), 3, array({0, 3, 3})},      {2.5f, Variant::TypeArray(), array({0, 10, 5})},
    };
    for (auto const & [minimum, maximum, expected] : rows) {
        Variant variant(5, 0, 10);
        variant.SetMinimum(minimum);
        variant.SetMaximum(maximum);
        EXPECT_EQ(array({variant.GetMinimum(), variant.GetMaximum(), variant}), expected);
    }
}

TEST(Variant, ComparesByTheLeftType)
{
    std::tuple<Variant, Variant, bool> const rows[] = {
        {Variant(), Variant(), true},
        {5, "5", true},
        {"5", 5, true},
        {true, 1, true},
        {5, Variant(5, 0, 9), true},
        {5, " 5", true},
        {Variant(), 0, false},
        {0, Variant(), false},
        {1.5f, 1, false},
        {1, 1.5f, false},
        {" 5", 5, false},
    };
    for (auto const & [left, right, equal] : rows) {
        EXPECT_EQ(left == right, equal);
        EXPECT_EQ(left != right, !equal);
    }
}

TEST(Variant, ThrowsWhereAnUndefinedOneIsRead)
{
    Variant const undefined;
    std::pair<std::function<void()>, std::string> const rows[] = {
        {[&] { std::ostringstream() << undefined; }, notRetrieved("a string value")},
        {[&] { undefined.operator bool(); }, notRetrieved("a boolean value")},
        {[&] { undefined.operator int(); }, notRetrieved("an integer value")},
        {[&] { undefined.operator Vector(); }, notRetrieved("a vector value")},
        {[&] { undefined[3]; }, noElement("3")},
        {[&] { undefined["k"]; }, noElement("k")},
        {[] { Variant(5)[3]; }, noElement("3")},
        {[] { Variant(5)["k"]; }, noElement("k")},
    };
    for (auto const & [action, message] : rows) {
        EXPECT_EQ(messageOf(action), message);
    }
}

TEST(Variant, MeetsARequirementAndKeepsWhatFits)
{
    std::tuple<Variant, Variant, std::string> const rows[] = {
        {Variant(), Variant(1, 0, 2), "integer 1"}, {"3", Variant(1, 0, 2), "integer 1"},
        {"1", Variant(0, 0, 2), "string 1"},        {"x", Variant(), "string x"},
        {2.0f, Variant::TypeString(), "float 2"},   {5, Variant::TypeVector(), "vector (0;0;0)"},
        {1.5f, Variant(0, 0, 2), "integer 0"},
    };
    for (auto const & [value, requirement, expected] : rows) {
        Variant variant = value;
        EXPECT_EQ(&variant.require(requirement), &variant);
        EXPECT_EQ(describe(variant), expected);
    }
}

TEST(Variant, SwapsPayloadsWithTheirEvents)
{
    Variant left;
    Variant & element = left["k"];
    Variant right = "text";
    left.swap(right);
    Recorder const leftRecorder(left);
    Recorder const rightRecorder(right);
    element = 2;
    EXPECT_EQ(left, Variant("text"));
    EXPECT_EQ(right["k"], Variant(2));
    EXPECT_TRUE(leftRecorder.GetCount() == 0 && rightRecorder.GetCount() == 1);
}

TEST(Variant, BecomesUndefinedWhenItsPayloadIsDestroyedFromOutsideAndTellsItsOwnEndWhileItIsWhole)
{
    struct Access : Variant
    {
        using Variant::GetValue;
        using Variant::SetValue;
    };
    auto variant = std::make_unique<Access>();
    VariantIntegerValue const value(5, 0, 9);
    Recorder recorder(*variant);
    variant->SetValue(&value);
    variant->SetValue(&value);
    variant->SetValue(nullptr);
    EXPECT_EQ(variant->GetMaximum(), Variant(9));
    delete variant->GetValue();
    EXPECT_EQ(describe(*variant), "undefined");
    EXPECT_EQ(recorder.GetCount(), 2u);

    std::string last;
    *static_cast<Variant *>(variant.get()) = "text";
    recorder.SetReaction([&](Observable const & observable, ObservableEvent const &) {
        last = describe(dynamic_cast<Variant const &>(observable));
    });
    variant.reset();
    EXPECT_EQ(last, "string text");
    EXPECT_EQ(recorder.GetCountOf<ObservableDestructionEvent>(), 1u);
}

namespace {
std::string textOf(Variant value)
{
    Archive archive;
    ArchiveElement element = ArchiveElement(archive).store("p");
    value.store(element);
    std::string text;
    MemorySerializer().save(text, archive);
    return text;
}

void read(Variant & value, std::string const & text)
{
    Archive archive;
    MemorySerializer().load(archive, text);
    ArchiveElement element(archive);
    value.retrieve(element);
}

Variant storedAndRetrieved(Variant const & value)
{
    Variant result = "replaced";
    Recorder const recorder(result);
    read(result, textOf(value));
    EXPECT_EQ(recorder.GetCount(), 1u);
    return result;
}
} // namespace

TEST(VariantArchive, ReadsBackWhatItWrote)
{
    Variant tree;
    tree["limited"] = Variant(1, -2, 3);
    tree["nested"][1] = "x";
    EXPECT_EQ(textOf(tree),
              "<p type=\"map\"><![CDATA[[2]]]>"
              "<value index=\"limited\" type=\"integer\" minimum=\"-2\" maximum=\"3\"><![CDATA[1]]></value>"
              "<value index=\"nested\" type=\"array\"><![CDATA[[2]]]><value index=\"0\"></value>"
              "<value index=\"1\" type=\"string\"><![CDATA[x]]></value></value></p>");
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
    EXPECT_EQ(messageOf([] { Variant(1.0f, 0.0f, 2.0f) = "inf"; }), notAssigned("a string value of 'inf'"));

    Variant crossed(5, 0, 10);
    crossed.SetMinimum(20);
    EXPECT_EQ(storedAndRetrieved(crossed).GetJSON(false), crossed.GetJSON(false));

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
    std::pair<std::string, std::string> const rows[] = {
        {"<p type='integer'>x</p>", notAssigned("a string value of 'x'")},
        {"<p type='Integer'>5</p>", "undefined"},
        {"<p type='float'>inf</p>", "float inf"},
        {"<p type='array'>[9]<value index='2'/><value index='0'/></p>", "array [3]"},
        {"<p type='array'><value index='1'/></p>", "array [2]"},
        {"<p type='array'><value index='2'/></p>", noElement("2")},
        {"<p type='filename'><value index='4000000'/></p>", noElement("4000000")},
        {"<p type='array'><value index='4294967295'/></p>", noElement("4294967295")},
        {"<p type='array'><value index='-1'/></p>", noElement("-1")},
        {"<p type='map'><value index='4000000'/><value index='4000000'/></p>", "map [1]"},
        {"<p type='vector'>(1;2;3)<value index='x'/></p>", noElement("x")},
    };
    for (auto const & [text, expected] : rows) {
        Variant variant(7, 0, 9);
        Recorder const recorder(variant);
        std::string const message = messageOf([&] { read(variant, text); });
        if (message == "nothing was thrown") {
            EXPECT_EQ(describe(variant), expected);
        } else {
            EXPECT_EQ(message, expected);
            EXPECT_EQ(variant.GetMaximum(), Variant(9));
            EXPECT_EQ(recorder.GetCount(), 0u);
        }
    }
}
