#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "object/Tesseralis.h"
#include "support/Messages.h"
#include "support/Recorder.h"
#include "value/Variant.h"
#include "value/VariantArrayValue.h"
#include "value/VariantMapValue.h"
#include "value/VariantNumberValue.h"
#include "value/VariantOptionValue.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace tesseralis;
using namespace tesseralis::test;

namespace {
Vector const s_vector(1, 2, 3);

std::string const c_noText = "Unable to retrieve a string value from this variant!";

Variant list(Variant compound, std::vector<Variant> const & elements)
{
    for (Variant const & element : elements) {
        compound, element;
    }
    return compound;
}

Variant array(std::vector<Variant> const & elements)
{
    return list(Variant::TypeArray(), elements);
}

Variant option(std::vector<Variant> const & elements)
{
    return list(Variant::TypeOption(), elements);
}

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
    Matrix matrix;
    for (unsigned int i = 0; i < 16; ++i) {
        matrix(i / 4, i % 4) = static_cast<float>(i);
    }
    struct Row
    {
        Variant value;
        std::string asArray;
        std::string asMap;
    };
    Row const rows[] = {
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
    EXPECT_EQ(messageOf([&] { color["r"] = 256; }), "Unable to assign an integer value of 256 to this variant!");
}

TEST(VariantCompound, LeavesFieldsWithoutAnElementAlone)
{
    EXPECT_EQ(array({1.0f}).operator Vector(), Vector(1, 0, 0));
    Variant vector = s_vector;
    vector.assign(array({9}));
    EXPECT_EQ(vector, Variant(Vector(9, 2, 3)));
    EXPECT_EQ(array({-5, 300}).operator Color(), Color(0, 255, 0, 255));
    EXPECT_EQ(array({Variant(), array({7.0f})}).operator Matrix()(1, 0), 7.0f);
    EXPECT_EQ(messageOf([] {
                  array({1.0f, Variant()}).operator Vector();
              }),
              "Unable to retrieve a float value from this variant!");
    EXPECT_EQ(messageOf([&] {
                  vector.assign(array({5, "x"}));
              }),
              "Unable to assign a string value of 'x' to this variant!");
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
    std::string const before = compound.GetJSON(false);
    EXPECT_EQ(messageOf([&] { compound = Vector(2, 9, 0.5f) * 3.0f; }),
              "Unable to assign an integer value of 6 to this variant!");
    compound[2] = Variant(1, 0, 1);
    recorder.clear();
    std::string const limited = compound.GetJSON(false);
    EXPECT_EQ(messageOf([&] { compound = Vector(4, 5, 6); }),
              "Unable to assign an integer value of 6 to this variant!");
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
    map.clear();
    map.assign(target);
    EXPECT_EQ(map.GetJSON(true), R"({"0":3,"1":"two"})");

    Variant const choice = option({"a", "b", 7});
    EXPECT_EQ(messageOf([&] { target.assign(choice); }), "Unable to assign a string value of 'a' to this variant!");
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
    EXPECT_EQ(messageOf([] { Variant::TypeMap().assign(5); }), "Unable to assign a value of type int to this variant!");

    map = Variant::TypeMap();
    map["100"] = 1;
    target = Variant::TypeArray();
    target.assign(map);
    EXPECT_EQ(target.GetSize(), 101u);
    map["1000000000"] = 1;
    EXPECT_EQ(messageOf([&] { target.assign(map); }),
              "Unable to retrieve a Variant with index '1000000000' from this variant!");
}

TEST(VariantCompound, SurvivesSourcesAndTargetsInsideOneAnother)
{
    auto const make = [] {
        Variant tree = array({array({1, 2}), Variant::TypeMap(), option({"a", array({5})})});
        tree[1]["0"] = "zero";
        tree[1]["k"][0] = "deep";
        return tree;
    };
    struct Row
    {
        std::function<void(Variant &)> change;
        std::string expected;
    };
    Row const rows[] = {
        {[](Variant & v) { v = v[0]; }, "[1,2]"},
        {[](Variant & v) { v = v[1]["k"][0]; }, "\"deep\""},
        {[](Variant & v) { v.assign(v[0]); }, "[1,2]"},
        {[](Variant & v) { v.assign(v[1]); },
         R"([[1,2],{"0":"deep","k":["deep"]},{"selection":"a","options":["a",[5]]}])"},
        {[](Variant & v) {
             v[0] = v;
             v = v[0];
         },
         make().GetJSON(true)},
        {[](Variant & v) {
             v[0].assign(v);
             v = v[0];
         },
         make().GetJSON(true)},
        {[](Variant & v) {
             v[1].assign(v);
             v = v[1];
         },
         R"({"0":"[2]","k":["deep"],"1":{"0":"zero","k":["deep"]},"2":{"selection":"a","options":["a",[5]]}})"},
        {[](Variant & v) {
             v[2] = v[1];
             v = v[2]["k"];
         },
         "[\"deep\"]"},
        {[](Variant & v) {
             v = v[0];
             v, v;
         },
         "[1,2,[1,2]]"},
        {[](Variant & v) {
             v = v[2];
             v.assign(v[1]);
         },
         R"({"selection":"a","options":["a",[5]]})"},
        {[](Variant & v) {
             v = v[0];
             v[1].assign(v[0]);
             v[0] = v[1];
         },
         "[1,1]"},
        {[](Variant & v) {
             v.require(v[0]);
             v = v[0];
         },
         "[1,2]"},
        {[](Variant & v) {
             v[0].swap(v[1]);
             v = v[1];
         },
         "[1,2]"},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        Variant variant = make();
        rows[i].change(variant);
        EXPECT_EQ(variant.GetJSON(true), rows[i].expected) << "row " << i;
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
        EXPECT_EQ(messageOf([&] { target.assign(refused); }),
                  "Unable to assign a string value of 'x' to this variant!");
        EXPECT_EQ(target.GetJSON(true), before);
        target.assign(source);
        Variant const * innermost = &target;
        for (int level = 0; level < 24; ++level) {
            innermost = type == Variant::Type::Map ? &(*innermost)[0] : &(*innermost)[1][0];
        }
        EXPECT_EQ(*innermost, Variant(2));
    }
}

TEST(VariantCompound, PassesAnEventFromAnyDepthOnOnce)
{
    Variant root = Variant::TypeMap();
    Variant * deepest = &root["list"][2]["a"][0];
    *deepest = 1;
    Recorder outer(root);
    Recorder middle(root["list"]);
    *deepest = 2;
    EXPECT_EQ(outer.GetCount(), 1u);
    EXPECT_EQ(middle.GetCount(), 1u);

    Variant copy = root;
    Recorder copied(copy);
    *deepest = 3;
    EXPECT_EQ(copied.GetCount(), 0u);
    copy["list"][2]["a"][0] = 4;
    EXPECT_EQ(copied.GetCount(), 1u);
    EXPECT_EQ(outer.GetCount(), 2u);
    EXPECT_EQ(*deepest, Variant(3));

    root["list"][2] = "gone";
    EXPECT_EQ(outer.GetCount(), 3u);
    root["list"][5];
    EXPECT_EQ(outer.GetCount(), 3u) << "growth has no event";
    root.beginModification();
    root["list"][4] = s_vector;
    root["new"] = 1;
    EXPECT_EQ(outer.GetCount(), 3u);
    root.endModification();
    EXPECT_EQ(outer.GetCount(), 4u);
    root["list"].clear();
    EXPECT_EQ(outer.GetCount(), 5u);
}

TEST(VariantCompound, FindsAndMakesElements)
{
    Variant variant;
    variant[3];
    EXPECT_EQ(namesOf(variant), "0 1 2 3 ");
    EXPECT_FALSE(variant[2].IsDefined());
    variant["5"] = 1;
    EXPECT_EQ(variant.GetSize(), 6u);
    std::string const names[] = {"5", " 5 ", "+5", "05", "6", "-1", "x", "", "5x", "99999999999"};
    for (std::string const & name : names) {
        EXPECT_EQ(variant.HasElement(name), &name < names + 4) << name;
    }
    for (char const * name : {"x", "-1", ""}) {
        EXPECT_EQ(messageOf([&] { variant[name]; }),
                  "Unable to retrieve a Variant with index '" + std::string(name) + "' from this variant!");
    }
    for (Variant target : {Variant(), variant, Variant::TypeOption(), Variant::TypeFilename("a"), Variant::TypeMap()}) {
        unsigned int const size = target.GetSize();
        EXPECT_EQ(messageOf([&] { target[-1]; }), "Unable to retrieve a Variant with index '-1' from this variant!");
        EXPECT_EQ(messageOf([&] { target.GetElement(2000000000u); }),
                  "Unable to retrieve a Variant with index '2000000000' from this variant!");
        EXPECT_EQ(target.GetSize(), size);
    }
    EXPECT_FALSE(Variant().HasElement(0u));
    EXPECT_FALSE(Variant(5).HasElement("0"));

    VariantArrayValue const emptyArray;
    VariantMapValue const emptyMap;
    VariantOptionValue const emptyOption;
    EXPECT_EQ(messageOf([&] { emptyArray.GetElement(0u); }),
              "Unable to retrieve a Variant with index '0' from this variant!");
    EXPECT_EQ(messageOf([&] { emptyMap.GetElement(0u); }),
              "Unable to retrieve a Variant with index '0' from this variant!");
    EXPECT_EQ(messageOf([&] { emptyMap.GetElement("k"); }),
              "Unable to retrieve a Variant with index 'k' from this variant!");
    EXPECT_EQ(messageOf([&] { emptyOption.GetElement(0u); }),
              "Unable to retrieve a variant with index '0' from this variant!");
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
    other[""] = "";
    other["m"] = "m";
    other["a"] = "a";
    EXPECT_FALSE(map == other);
    other["z"] = "z";
    EXPECT_TRUE(map == other);
    map.clear();
    map["b"];
    EXPECT_EQ(namesOf(map), "b ");
}

TEST(VariantCompound, ComparesArraysWithArraysOnly)
{
    EXPECT_TRUE(array({1, 2}) == array({1, "2"}));
    EXPECT_TRUE(array({Variant()}) == array({Variant()}));
    EXPECT_FALSE(array({1, 2}) == array({1}));
    EXPECT_FALSE(array({1, 2}) == Variant(Vector(1, 2, 0)));
    EXPECT_FALSE(array({}) == Variant("[0]"));
    EXPECT_FALSE(array({}) == Variant::TypeMap());
    EXPECT_TRUE(Variant("[1]") == array({5})) << "a text compares texts";
}

TEST(VariantOption, ActsAsTheSelectedOption)
{
    Variant variant = option({"a", "b", 7});
    Recorder recorder(variant);
    EXPECT_EQ(variant, Variant("a"));
    variant.assign("b");
    variant.assign("b");
    EXPECT_EQ(recorder.GetCount(), 1u);
    EXPECT_EQ(messageOf([&] { variant = "c"; }), "Unable to assign a string value of 'c' to this variant!");
    EXPECT_EQ(messageOf([&] { variant.assign(8); }), "Unable to assign a value to this variant!");
    EXPECT_EQ(variant, Variant("b"));
    variant[0] = "x";
    EXPECT_EQ(recorder.GetCount(), 1u) << "an option that isn't selected has no say";
    variant[1] = "y";
    EXPECT_EQ(recorder.GetCount(), 2u);
    variant[3];
    EXPECT_EQ(recorder.GetCount(), 3u);
    EXPECT_EQ(variant, Variant("y"));

    VariantOptionValue value;
    Recorder selection(value);
    value.GetElement(0u) = 1;
    value.GetElement(1u) = 2;
    selection.clear();
    value.Set(2);
    value.Set(2);
    EXPECT_EQ(selection.GetCount(), 1u);
}

TEST(VariantOption, TellsWhatItHasNot)
{
    Variant empty = Variant::TypeOption();
    auto const missing = [](std::string const & text) {
        return "Unable to retrieve a " + text + " from this variant!";
    };
    EXPECT_EQ(messageOf([&] { empty.operator std::string(); }), missing("string value of type string"));
    EXPECT_EQ(messageOf([&] { empty.operator bool(); }), missing("value of type boolean"));
    EXPECT_EQ(messageOf([&] { empty.operator int(); }), missing("value of type integer"));
    EXPECT_EQ(messageOf([&] { empty.operator float(); }), missing("value of type float"));
    EXPECT_EQ(messageOf([&] { empty.operator Color(); }), missing("value of type color"));
    EXPECT_EQ(messageOf([&] { empty.GetJSON(true); }), "Unable to retrieve value from this variant!");
    auto const refused = [](std::string const & text) { return "Unable to assign " + text + " to this variant!"; };
    EXPECT_EQ(messageOf([&] { empty = true; }), refused("a boolean value of '1'"));
    EXPECT_EQ(messageOf([&] { empty = 5; }), refused("an integer value of '5'"));
    EXPECT_EQ(messageOf([&] { empty = 0.5f; }), refused("a float value of '0.500000'"));
    EXPECT_EQ(messageOf([&] { empty = s_vector; }), refused("a vector value of '(1;2;3)'"));
    EXPECT_EQ(messageOf([&] { empty = Quaternion(); }), refused("a quaternion value of '((0;0;0);0)'"));
    EXPECT_EQ(messageOf([&] { empty = Box(s_vector, s_vector); }), refused("a box value of '((1;2;3);(1;2;3))'"));
    EXPECT_EQ(messageOf([&] { empty = Color(); }), refused("a color value of '(0;0;0;255)'"));
    EXPECT_EQ(messageOf([&] { option({Variant()}) = "x"; }), c_noText);
    EXPECT_FALSE(empty == empty);
    EXPECT_EQ(option({5, 6}).GetSize(), 2u);
    Variant const classes = option({s_vector, Color(1, 2, 3, 4)});
    EXPECT_EQ(classes.operator Vector(), s_vector);
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
    struct Row
    {
        std::string text;
        std::string result;
        unsigned int size;
    };
    for (auto const & [text, result, size] :
         {Row{"", "", 1}, Row{";", "", 0}, Row{"a", "a", 1}, Row{";a;;b;", "a;b", 2}, Row{"a;b;c", "a;b;c", 3}}) {
        Variant const filename = Variant::TypeFilename(text);
        EXPECT_EQ(filename.operator std::string(), result);
        EXPECT_EQ(filename.GetSize(), size);
    }
    EXPECT_EQ(Variant::TypeFilename().GetSize(), 0u);
    EXPECT_EQ(references(), "");

    Variant filename = Variant::TypeFilename("f1;f2", "*.txt");
    Variant const * const second = &filename[1];
    Recorder recorder(filename);
    EXPECT_EQ(filename.GetFilter(), Variant("*.txt"));
    EXPECT_EQ(references(), "f1 f2 ");
    {
        Variant const copy = filename;
        filename = "f3;f2;f4";
        EXPECT_EQ(references(), "f1 f2 f3 f4 ");
    }
    EXPECT_EQ(references(), "f2 f3 f4 ");
    EXPECT_EQ(&filename[1], second);
    EXPECT_EQ(recorder.GetCount(), 1u);
    filename[2] = "other";
    EXPECT_EQ(recorder.GetCount(), 2u);
    EXPECT_EQ(filename.operator std::string(), "f3;f2;other");
    EXPECT_EQ(references(), "f2 f3 f4 ");
    filename[2] = Variant();
    EXPECT_EQ(messageOf([&] { filename.operator std::string(); }), c_noText);
    filename[2] = Variant("f4");
    filename[4] = "f5";
    EXPECT_EQ(filename.operator std::string(), "f3;f2;f4;;f5");
    {
        Variant const owner = Variant::TypeFilename("f5;f6");
        filename[2] = "f6";
        filename = "f3";
        EXPECT_EQ(references(), "f3 f5 f6 ") << "only what it has added itself is removed";
    }
    std::string many = "n";
    for (int i = 0; i < 65536; ++i) {
        many += ";n";
    }
    EXPECT_EQ(messageOf([&] { filename = many; }), "Unable to assign more than 65536 names to this variant!");
    filename.clear();
    EXPECT_EQ(references(), "");
    EXPECT_EQ(filename.GetFilter(), Variant("*.txt"));
}

TEST(VariantCompound, BehavesLikeAPlainModelUnderRandomEdits)
{
    std::mt19937 random(7);
    Variant map = Variant::TypeMap();
    std::vector<std::pair<std::string, std::vector<int>>> model;
    Recorder recorder(map);
    for (int step = 0; step < 3000; ++step) {
        std::string const name = std::to_string(random() % 40);
        auto found = std::find_if(model.begin(), model.end(), [&](auto const & entry) { return entry.first == name; });
        if (found == model.end()) {
            map[name] = Variant::TypeArray();
            found = model.insert(model.end(), {name, {}});
        }
        std::vector<int> & numbers = found->second;
        recorder.clear();
        switch (numbers.empty() ? 0 : random() % 4) {
        case 0:
            map[name], Variant(step);
            numbers.push_back(step);
            break;
        case 1: {
            std::size_t const i = random() % numbers.size();
            map[name][static_cast<int>(i)] = step;
            numbers[i] = step;
            break;
        }
        case 2: {
            auto const & [other, values] = model[random() % model.size()];
            map[name] = Variant(map[other]);
            numbers = std::vector<int>(values);
            break;
        }
        default:
            if (random() % 20 == 0) {
                map[name].clear();
                numbers.clear();
            } else {
                map[name][0] = step;
                numbers[0] = step;
            }
        }
        EXPECT_EQ(recorder.GetCount(), 1u) << "step " << step;
    }

    ASSERT_EQ(map.GetSize(), model.size());
    for (unsigned int i = 0; i < model.size(); ++i) {
        EXPECT_EQ(map.GetElementName(i), model[i].first);
        ASSERT_EQ(map.GetElement(i).GetSize(), model[i].second.size());
        for (unsigned int j = 0; j < model[i].second.size(); ++j) {
            EXPECT_EQ(map.GetElement(i).GetElement(j).operator int(), model[i].second[j]);
        }
    }
}
