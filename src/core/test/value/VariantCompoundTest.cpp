#include "support/Values.h"
#include "value/VariantArrayValue.h"
#include "value/VariantMapValue.h"
#include "value/VariantNumberValue.h"
#include "value/VariantOptionValue.h"

#include <tuple>

namespace {
Vector const s_vector(1, 2, 3);

std::string namesOf(Variant const & variant)
{
    std::string names;
    for (unsigned int i = 0; i < variant.GetSize(); ++i) {
        names += variant.GetElementName(i) + " ";
    }
    return names + variant.GetElementName(variant.GetSize());
}
} // namespace

TEST(VariantCompound, HoldsTheFieldsOfAClassValueInArraysAndMaps)
{
    Matrix const matrix(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    std::tuple<Variant, std::string, std::string> const rows[] = {
        {s_vector, "[1,2,3]", R"({"x":1,"y":2,"z":3})"},
        {Quaternion(s_vector, 4), R"([{"x":1,"y":2,"z":3},4])", R"({"vector":{"x":1,"y":2,"z":3},"scalar":4})"},
        {Box(s_vector, -s_vector), R"([{"x":1,"y":2,"z":3},{"x":-1,"y":-2,"z":-3}])",
         R"({"minimum":{"x":1,"y":2,"z":3},"maximum":{"x":-1,"y":-2,"z":-3}})"},
        {matrix, "[[0,1,2,3],[4,5,6,7],[8,9,10,11],[12,13,14,15]]",
         R"({"0":{"0":0,"1":1,"2":2,"3":3},"1":{"0":4,"1":5,"2":6,"3":7},)"
         R"("2":{"0":8,"1":9,"2":10,"3":11},"3":{"0":12,"1":13,"2":14,"3":15}})"},
        {Color(1, 2, 3, 4), "[1,2,3,4]", R"({"r":1,"g":2,"b":3,"a":4})"},
    };
    for (auto const & [value, asArray, asMap] : rows) {
        for (auto type : {Variant::Type::Array, Variant::Type::Map}) {
            Variant compound(type);
            compound.assign(value);
            EXPECT_EQ(compound.GetJSON(true), type == Variant::Type::Array ? asArray : asMap);
            std::string const names = namesOf(compound);
            compound.assign(value);
            EXPECT_EQ(namesOf(compound), names);
            EXPECT_EQ(compound.GetConverted(value.GetType()), value);
            EXPECT_EQ(value.GetConverted(type), compound);
        }
    }
    Variant color = Variant::TypeMap();
    color = Color(1, 2, 3, 4);
    EXPECT_EQ(messageOf([&] { color["r"] = 256; }), notAssigned("an integer value of 256"));
}

TEST(VariantCompound, LeavesFieldsWithoutAnElementAlone)
{
    EXPECT_EQ(array({1.0f}).operator Vector(), Vector(1, 0, 0));
    Variant vector = s_vector;
    vector.assign(array({9}));
    EXPECT_EQ(vector, Variant(Vector(9, 2, 3)));
    EXPECT_EQ(array({-5, 300}).operator Color(), Color(0, 255, 0, 255));
    EXPECT_EQ(array({Variant(), array({7.0f})}).operator Matrix()(1, 0), 7.0f);
    EXPECT_EQ(messageOf([] { array({1.0f, Variant()}).operator Vector(); }), notRetrieved("a float value"));
    EXPECT_EQ(messageOf([&] { vector.assign(array({5, "x"})); }), notAssigned("a string value of 'x'"));
    EXPECT_EQ(vector, Variant(Vector(9, 2, 3)));
}

TEST(VariantCompound, KeepsTypesLimitsAndAddressesOfElementsThatAreSet)
{
    Variant compound = array({Variant(1, 0, 5), "a"});
    Variant const * const first = &compound[0];
    compound = s_vector;
    EXPECT_EQ(compound.GetJSON(false),
              R"({"_type":"array","_value":[{"_type":"integer","_minimum":0,"_maximum":5,"_value":1},)"
              R"({"_type":"string","_value":"2"},)"
              R"({"_type":"float","_minimum":-3.40282e+38,"_maximum":3.40282e+38,"_value":3}]})");
    Recorder recorder(compound);
    compound[2] = Variant(1, 0, 1);
    recorder.clear();
    std::string const limited = compound.GetJSON(false);
    EXPECT_EQ(messageOf([&] { compound = Vector(4, 5, 6); }), notAssigned("an integer value of 6"));
    EXPECT_EQ(compound.GetJSON(false), limited);
    EXPECT_EQ(recorder.GetCount(), 0u);
    for (int i = 3; i < 1000; ++i) {
        compound[i] = i;
    }
    EXPECT_EQ(&compound[0], first);
}

TEST(VariantCompound, ConvertsBetweenArraysMapsAndOptions)
{
    Variant map = Variant::TypeMap();
    map["1"] = "one";
    map["x"] = "two";
    map["0"] = Variant(3, 0, 9);
    Variant target = Variant::TypeArray();
    target.assign(map);
    EXPECT_EQ(target.GetJSON(true), R"([3,"two"])") << "the name x has the position 1 and comes after the name 1";
    EXPECT_EQ(target[0].GetMaximum(), Variant(9));
    map["x"] = Variant::TypeArray();
    map["0"] = Variant(10);
    EXPECT_EQ(messageOf([&] { target.assign(map); }), notAssigned("an integer value of 10"));
    EXPECT_EQ(target.GetJSON(true), R"([3,"two"])");
    map.clear();
    map.assign(target);
    EXPECT_EQ(map.GetJSON(true), R"({"0":3,"1":"two"})");

    Variant const choice = option({"a", "b", 7});
    EXPECT_EQ(messageOf([&] { target.assign(choice); }), notAssigned("a string value of 'a'"));
    EXPECT_EQ(target.GetJSON(true), R"([3,"two"])");
    map.clear();
    map.assign(choice);
    EXPECT_EQ(map.GetJSON(true), R"({"selection":"a","options":["a","b",7]})");
    for (Variant const & source : {map, array({"b", array({"a", "b", 7})})}) {
        Variant copy = Variant::TypeOption();
        copy.assign(source);
        EXPECT_EQ(copy.GetSize(), 3u);
        EXPECT_EQ(copy, source.GetType() == Variant::Type::Map ? Variant("a") : Variant("b"));
    }
    Variant none = choice;
    none.assign(array({"q"}));
    EXPECT_EQ(none, Variant("a"));
    EXPECT_EQ(messageOf([] { Variant::TypeMap().assign(5); }), notAssigned("a value of type int"));

    map = Variant::TypeMap();
    map["100"] = 1;
    target = Variant::TypeArray();
    target.assign(map);
    EXPECT_EQ(target.GetSize(), 101u);
    map["1000000000"] = 1;
    EXPECT_EQ(messageOf([&] { target.assign(map); }), noElement("1000000000"));
}

TEST(VariantCompound, SurvivesSourcesAndTargetsInsideOneAnother)
{
    auto const make = [] {
        Variant tree = array({array({1, 2}), Variant::TypeMap(), option({"a", array({5})})});
        tree[1]["0"] = "zero";
        tree[1]["k"][0] = "deep";
        return tree;
    };
    auto const at = [](Variant & root, std::string const & path) -> Variant & {
        Variant * variant = &root;
        std::istringstream names(path);
        for (std::string name; names >> name;) {
            variant = &(*variant)[name];
        }
        return *variant;
    };
    std::string const choice = R"({"selection":"a","options":["a",[5]]})";
    auto const replace = [](Variant & target, Variant & source) { target = source; };
    auto const assign = [](Variant & target, Variant & source) { target.assign(source); };
    auto const append = [](Variant & target, Variant & source) { target, source; };
    auto const require = [](Variant & target, Variant & source) { target.require(source); };
    using Change = void (*)(Variant & target, Variant & source);
    std::tuple<std::string, Change, std::string, std::string> const rows[] = {
        {"", replace, "0", "[1,2]"},
        {"0", replace, "", make().GetJSON(true)},
        {"2", replace, "1 k", "[\"deep\"]"},
        {"", assign, "1", R"([[1,2],{"0":"deep","k":["deep"]},)" + choice + "]"},
        {"0", assign, "", make().GetJSON(true)},
        {"1", assign, "", R"({"0":"[2]","k":["deep"],"1":{"0":"zero","k":["deep"]},"2":)" + choice + "}"},
        {"2", assign, "2 1", choice},
        {"0", append, "0", "[1,2,[1,2]]"},
        {"1 k", append, "", R"(["deep",)" + make().GetJSON(true) + "]"},
        {"2", require, "", choice},
    };
    for (auto const & [target, change, source, expected] : rows) {
        Variant root = make();
        change(at(root, target), at(root, source));
        EXPECT_EQ(at(root, target).GetJSON(true), expected) << target << " from " << source;
    }
}

TEST(VariantCompound, AssignsDeepSourcesWithoutTryingEachLevelAgain)
{
    for (auto type : {Variant::Type::Map, Variant::Type::Option}) {
        Variant target = 1;
        Variant source = 2;
        Variant refused = "x";
        for (int level = 0; level < 24; ++level) {
            target = type == Variant::Type::Map ? array({target}) : array({Variant(), array({target})});
            for (Variant * const inner : {&source, &refused}) {
                Variant outer(type);
                outer["0"] = Variant(*inner);
                *inner = outer;
            }
        }
        std::string const before = target.GetJSON(true);
        EXPECT_EQ(messageOf([&] { target.assign(refused); }), notAssigned("a string value of 'x'"));
        EXPECT_EQ(target.GetJSON(true), before);
        target.assign(source);
        Variant const * innermost = &target;
        for (int level = 0; level < 24; ++level) {
            innermost = type == Variant::Type::Map ? &(*innermost)[0] : &(*innermost)[1][0];
        }
        EXPECT_EQ(*innermost, Variant(2));
    }
}

TEST(VariantCompound, GoesWithoutAStackForEachLevel)
{
    Variant outer;
    for (int level = 0; level < 200000; ++level) {
        Variant next;
        next["0"].swap(outer);
        outer.swap(next);
    }
    outer = Variant();
}

TEST(VariantCompound, PassesAnEventFromAnyDepthOnOnce)
{
    Variant root;
    Variant & deepest = root["list"][2]["a"][0];
    Variant copy = root;
    Recorder const outer(root);
    Recorder const middle(root["list"]);
    Recorder const copied(copy);
    deepest = 1;
    copy["list"][2]["a"][0] = 2;
    EXPECT_TRUE(outer.GetCount() == 1 && middle.GetCount() == 1 && copied.GetCount() == 1);
    EXPECT_EQ(deepest, Variant(1));

    root["list"][2] = "gone";
    root["list"][5];
    EXPECT_EQ(outer.GetCount(), 2u) << "growth has no event";
    root.beginModification();
    root["list"][4] = s_vector;
    root["new"] = 1;
    root.endModification();
    EXPECT_EQ(outer.GetCount(), 3u);
}

TEST(VariantCompound, FindsAndMakesElements)
{
    Variant variant;
    variant[3];
    EXPECT_EQ(namesOf(variant), "0 1 2 3 ");
    EXPECT_FALSE(variant[2].IsDefined());
    variant["5"] = 1;
    EXPECT_EQ(variant.GetSize(), 6u);
    for (std::string const name : {"5", " 5 ", "+5", "05", "-1", "x", "", "5x", "99999999999"}) {
        bool const exists = name.find('5') != std::string::npos && name != "5x";
        EXPECT_EQ(variant.HasElement(name), exists) << name;
        EXPECT_EQ(messageOf([&] { variant[name]; }), exists ? "nothing was thrown" : noElement(name));
    }
    for (Variant target : {Variant(), variant, Variant::TypeOption(), Variant::TypeFilename("a"), Variant::TypeMap()}) {
        unsigned int const size = target.GetSize();
        EXPECT_EQ(messageOf([&] { target[-1]; }), noElement("-1"));
        EXPECT_EQ(messageOf([&] { target.GetElement(2000000000u); }), noElement("2000000000"));
        EXPECT_EQ(target.GetSize(), size);
    }
    EXPECT_FALSE(Variant().HasElement(0u) || Variant(5).HasElement("0"));

    // Only the constant payloads refuse to make what is missing.
    EXPECT_EQ(messageOf([] { std::as_const(*std::make_unique<VariantArrayValue>()).GetElement(0u); }), noElement("0"));
    EXPECT_EQ(messageOf([] { std::as_const(*std::make_unique<VariantMapValue>()).GetElement("k"); }), noElement("k"));
    EXPECT_EQ(messageOf([] { std::as_const(*std::make_unique<VariantOptionValue>()).GetElement(0u); }),
              notRetrieved("a variant with index '0'"));
}

TEST(VariantCompound, KeepsTheNamesOfAMapInTheOrderOfTheirComing)
{
    Variant map;
    for (char const * name : {"z", "a", "m", "a", "z", ""}) {
        map[name] = std::string(name);
    }
    EXPECT_EQ(namesOf(map), "z a m  ");
    EXPECT_EQ(map[2], Variant("m"));
    Variant other;
    for (char const * name : {"", "m", "a", "z"}) {
        EXPECT_FALSE(map == other);
        other[name] = name;
    }
    EXPECT_TRUE(map == other);
    map.clear();
    map["b"];
    EXPECT_EQ(namesOf(map), "b ");
}

TEST(VariantCompound, ComparesArraysWithArraysOnly)
{
    EXPECT_TRUE(array({1, Variant()}) == array({"1", Variant()}));
    for (Variant const & other : {array({1}), Variant(Vector(1, 2, 0)), Variant("[2]"), Variant::TypeMap()}) {
        EXPECT_FALSE(array({1, 2}) == other);
    }
    EXPECT_TRUE(Variant("[1]") == array({5})) << "a text compares texts";
}

TEST(VariantOption, ActsAsTheSelectedOption)
{
    Variant variant = option({"a", "b", 7});
    Recorder recorder(variant);
    EXPECT_EQ(variant, Variant("a"));
    variant.assign("b");
    variant.assign("b");
    EXPECT_EQ(messageOf([&] { variant = "c"; }), notAssigned("a string value of 'c'"));
    EXPECT_EQ(messageOf([&] { variant.assign(8); }), notAssigned("a value"));
    variant[0] = "x";
    EXPECT_EQ(recorder.GetCount(), 1u) << "an option that isn't selected has no say";
    variant[1] = "y";
    EXPECT_EQ(recorder.GetCount(), 2u);
    variant[3];
    EXPECT_EQ(recorder.GetCount(), 3u);
    EXPECT_EQ(variant, Variant("y"));

    VariantOptionValue value;
    value.GetElement(0u) = 1;
    value.GetElement(1u) = 2;
    Recorder const selection(value);
    value.Set(2);
    value.Set(2);
    EXPECT_EQ(selection.GetCount(), 1u);
}

TEST(VariantOption, TellsWhatItHasNot)
{
    Variant empty = Variant::TypeOption();
    std::pair<std::function<void()>, std::string> const rows[] = {
        {[&] { empty.operator std::string(); }, notRetrieved("a string value of type string")},
        {[&] { empty.operator bool(); }, notRetrieved("a value of type boolean")},
        {[&] { empty.operator float(); }, notRetrieved("a value of type float")},
        {[&] { empty.operator Color(); }, notRetrieved("a value of type color")},
        {[&] { empty.GetJSON(true); }, notRetrieved("value")},
        {[&] { empty = true; }, notAssigned("a boolean value of '1'")},
        {[&] { empty = 5; }, notAssigned("an integer value of '5'")},
        {[&] { empty = 0.5f; }, notAssigned("a float value of '0.500000'")},
        {[&] { empty = s_vector; }, notAssigned("a vector value of '(1;2;3)'")},
        {[&] { option({Variant()}) = "x"; }, notRetrieved("a string value")},
    };
    for (auto const & [action, message] : rows) {
        EXPECT_EQ(messageOf(action), message);
    }
    EXPECT_FALSE(empty == empty);
}

TEST(VariantFilename, SplitsAndJoinsNamesAndCountsThemInTheRegistry)
{
    auto const references = [] {
        std::string text;
        for (std::string const & name : Tesseralis::Get().GetFileReferences()) {
            text += name + " ";
        }
        return text;
    };
    for (auto const & [text, size] : {std::pair("", 1u), {";", 0u}, {";a;;b;", 2u}}) {
        Variant const filename = Variant::TypeFilename(text);
        EXPECT_EQ(filename.GetSize(), size);
        EXPECT_EQ(filename.operator std::string(), size < 2 ? "" : "a;b");
    }
    EXPECT_EQ(references(), "");

    Variant filename = Variant::TypeFilename("f1;f2", "*.txt");
    Recorder recorder(filename);
    Recorder second(filename[1]);
    EXPECT_EQ(filename.GetFilter(), Variant("*.txt"));
    EXPECT_EQ(references(), "f1 f2 ");
    {
        Variant const copy = filename;
        filename = "f3;f2;f4";
        EXPECT_EQ(references(), "f1 f2 f3 f4 ");
    }
    EXPECT_EQ(references(), "f2 f3 f4 ");
    EXPECT_EQ(recorder.GetCount(), 1u);
    EXPECT_EQ(second.GetCount(), 0u) << "the name that stays isn't touched";
    filename[2] = "other";
    EXPECT_EQ(recorder.GetCount(), 2u);
    EXPECT_EQ(filename.operator std::string(), "f3;f2;other");
    EXPECT_EQ(references(), "f2 f3 f4 ");
    filename[4] = "f5";
    EXPECT_EQ(filename.operator std::string(), "f3;f2;other;;f5");
    filename[2] = Variant();
    EXPECT_EQ(messageOf([&] { filename.operator std::string(); }), notRetrieved("a string value"));
    filename[2] = Variant("f4");
    {
        Variant const owner = Variant::TypeFilename("f5;f6");
        filename[2] = "f6";
        filename = "f3";
        EXPECT_EQ(references(), "f3 f5 f6 ") << "only what it has added itself is removed";
    }
    EXPECT_EQ(messageOf([&] { filename = repeat("n;", 65537); }),
              "Unable to assign more than 65536 names to this variant!");
    filename.clear();
    EXPECT_EQ(references(), "");
    EXPECT_EQ(filename.GetFilter(), Variant("*.txt"));
}
