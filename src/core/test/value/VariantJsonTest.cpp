#include "support/Values.h"

#include <tuple>

namespace {
/// The type and the plain form of what a text is read as, or the message of what that throws.
std::string read(std::string const & text)
{
    std::string result;
    std::string const message = messageOf([&] {
        Variant const value = Variant::fromJSON(text);
        result = value.GetTypeName() + " " + value.GetJSON(true);
    });
    return result.empty() ? message : result;
}
} // namespace

TEST(VariantJson, WritesBothForms)
{
    Variant map;
    map["b"] = 1;
    map["a"][1] = true;
    std::tuple<Variant, std::string, std::string> const rows[] = {
        {Variant(), "null", "null"},
        {"q\"b\\ \b\f\n\r\t\x01\x1f\x7f\xff/", "\"q\\\"b\\\\ \\b\\f\\n\\r\\t\\u0001\\u001f\x7f\xff/\"",
         "{\"_type\":\"string\",\"_value\":\"q\\\"b\\\\ \\b\\f\\n\\r\\t\\u0001\\u001f\x7f\xff/\"}"},
        {false, "false", R"({"_type":"boolean","_value":false})"},
        {5, "5", R"({"_type":"integer","_minimum":-2147483648,"_maximum":2147483647,"_value":5})"},
        {Variant(0.5f, 0.0f, 1.0f), "0.5", R"({"_type":"float","_minimum":0,"_maximum":1,"_value":0.5})"},
        {1e6f, "1.0e+06", R"({"_type":"float","_minimum":-3.40282e+38,"_maximum":3.40282e+38,"_value":1.0e+06})"},
        {Variant(-1e-7f, -1.0f, 1.0f), "-1.0e-07", R"({"_type":"float","_minimum":-1,"_maximum":1,"_value":-1.0e-07})"},
        {Variant::TypeFilename("a;b", "*"), "\"a;b\"", R"({"_type":"filename","_filter":"*","_value":"a;b"})"},
        {Variant::TypeArray(), "[]", R"({"_type":"array","_value":[]})"},
        {Variant::TypeMap(), "{}", R"({"_type":"map","_value":{}})"},
        {map, R"({"b":1,"a":[null,true]})",
         R"({"_type":"map","_value":{"b":{"_type":"integer","_minimum":-2147483648,"_maximum":2147483647,"_value":1},)"
         R"("a":{"_type":"array","_value":[null,{"_type":"boolean","_value":true}]}}})"},
        {Vector(1, 2, 3), R"({"x":1,"y":2,"z":3})", R"({"_type":"vector","_value":{"x":1,"y":2,"z":3}})"},
        {Matrix() * 2.0f, "[[2,0,0,0],[0,2,0,0],[0,0,2,0],[0,0,0,2]]",
         R"({"_type":"matrix","_value":[[2,0,0,0],[0,2,0,0],[0,0,2,0],[0,0,0,2]]})"},
    };
    for (auto const & [value, plain, typed] : rows) {
        EXPECT_EQ(value.GetJSON(true), plain);
        EXPECT_EQ(value.GetJSON(false), typed);
        EXPECT_EQ(Variant::fromJSON(typed).GetJSON(false), typed);
        EXPECT_EQ(Variant::fromJSON(plain).GetJSON(true), plain);
    }
}

TEST(VariantJson, ReadsTypedValuesOfEveryTypeBack)
{
    Variant values = array({Vector(1, 2, 3), Quaternion(Vector(1, 2, 3), 4), Box(Vector(), Vector(1, 2, 3)),
                            Matrix() * 3.0f, Color(1, 2, 3, 4), option({"a", "b"})});
    values[5].assign("b");
    Variant const result = Variant::fromJSON(values.GetJSON(false));
    EXPECT_EQ(result, values);
    EXPECT_EQ(result.GetJSON(false), values.GetJSON(false));
}

TEST(VariantJson, ReadsMoreThanJson)
{
    std::pair<std::string, std::string> const rows[] = {
        {"", "undefined null"},
        {"5", "integer 5"},
        {"  -7 rest", "integer -7"},
        {"1e3", "integer 1"},
        {"1.5e3", "float 1500"},
        {"-", "integer 0"},
        {"1.5e", "float 0"},
        {"1.2.3", "float 1.2"},
        {"99999999999", "integer 2147483647"},
        {"-99999999999", "integer -2147483648"},
        {"9.9e99", "float 3.40282e+38"},
        {"@", "undefined null"},
        {"tru", "boolean true"},
        {"[tXXX,fXXXX,nXXX]", "array [true,false,null]"},
        {"[1,,2]", "array [1,2]"},
        {"[1 2,]", "array [1,2]"},
        {"[[[]],{}]", "array [[[]],{}]"},
        {R"({"a" 1})", R"(map {"a":1})"},
        {R"({"a"  "b" ,: "c":[1]"d"{}})", R"(map {"a":"b","c":[1],"d":{}})"},
        {R"({"a":})", "map {}"},
        {R"({"a":1,"a":"2"})", R"(map {"a":2})"},
        {R"({"a":1,"a":"x"})", "undefined null"},
        {"{1:2}", "undefined null"},
        {R"({[]:2})", "undefined null"},
        {R"("\u0041\u1f42\/\q\"")", R"(string "AB/q\"")"},
        {R"("\u004")", "undefined null"},
        {R"(["\u00g1"])", "undefined null"},
        {"\"abc", "undefined null"},
        {"\"abc\\", "undefined null"},
        {"[1", "undefined null"},
        {R"({"a":1)", "undefined null"},
        {R"({"a":[1})", "undefined null"},
    };
    for (auto const & [text, expected] : rows) {
        EXPECT_EQ(read(text), expected) << text;
    }
}

TEST(VariantJson, ReadsTypedObjectsInAnyOrderAndWithinTheirLimits)
{
    std::pair<std::string, std::string> const rows[] = {
        {R"({"_type":"integer","_value":"7"})", "integer 7"},
        {R"({"_value":2,"_maximum":3,"other":1,"_type":"integer"})", "integer 2"},
        {R"({"_type":"integer","_maximum":3,"_value":4})", notAssigned("an integer value of 4")},
        {R"([{"_type":"integer","_value":[]}])", notRetrieved("a value of type int")},
        {R"({"_type":"filename","_filter":null})", notRetrieved("a string value")},
        {R"({"_type":"nothing","_value":4})", "undefined null"},
        {R"({"_type":null,"_value":4})", R"(map {"_type":null,"_value":4})"},
        {R"({"_type":"float","_value":null})", "float 0"},
        {R"({"_type":"integer","_minimum":5})", "integer 5"},
        {R"({"_type":"array","_value":{"1":"b","x":"c","0":"a"}})", R"(array ["a","c"])"},
        {R"({"_type":"map","_value":["a",[1]]})", R"(map {"0":"a","1":[1]})"},
        {R"({"_type":"map","_value":"text"})", "map {}"},
        {R"({"_type":"vector","_value":[1,2]})", R"(vector {"x":1,"y":2,"z":0})"},
        {R"({"_type":"array","_value":{"_type":"vector"}})", "array [0,0,0]"},
        {R"({"_type":"option","_value":["b",["a","b"]]})", R"(option {"selection":"b","options":["a","b"]})"},
        {R"({"_type":"option","_value":5})", notAssigned("a value")},
        {R"({"_type":"array","_value":{"9999999":1}})", noElement("9999999")},
        {R"({"_type":"array","_value":{"0":[],"00":{"4000":1}}})", noElement("4000")},
    };
    for (auto const & [text, expected] : rows) {
        EXPECT_EQ(read(text), expected) << text;
    }
}

TEST(VariantJson, AssignsToTheTypeThatIsThere)
{
    Variant variant(1, 0, 9);
    variant.SetJSON("\"5\"");
    variant.SetJSON("[");
    EXPECT_EQ(variant, Variant(5));
    EXPECT_EQ(messageOf([&] { variant.SetJSON("12"); }), notAssigned("an integer value of 12"));
    Variant undefined;
    undefined.SetJSON(R"({"_type":"integer","_maximum":3,"_value":2})");
    EXPECT_EQ(undefined.GetMaximum(), Variant(3));
}

TEST(VariantJson, EndsCleanlyOnDeepAndLongTexts)
{
    EXPECT_TRUE(Variant::fromJSON(repeat("[", 1024) + repeat("]", 1024)).IsDefined());
    for (std::string const & text :
         {repeat("[", 1025) + repeat("]", 1025), repeat("[", 100000), repeat("{\"a\":", 100000),
          "[" + std::string(10000000, '@') + "]", "{" + repeat("\"\"n,,,", 4000000) + "}"}) {
        EXPECT_FALSE(Variant::fromJSON(text).IsDefined());
    }
    EXPECT_EQ(Variant::fromJSON(std::string(10000000, '9')), Variant(2147483647));

    // Each level converts what is in it; copies on each would take minutes.
    std::string const ballast = "[" + repeat("1,", 100000) + "]";
    std::tuple<std::string, int, std::string, std::string> const rows[] = {
        {R"({"_type":"array","_value":{"0":)", 300, ballast, "}}"},
        {R"({"_type":"option","_value":{"options":[)", 300, ballast, "]}}"},
        {R"({"_type":"map","_value":{"k":)", 300, ballast, "}}"},
        {R"({"_type":"array","_value":{"0":[],"00":)", 24, "{}", "}}"},
    };
    for (auto const & [opening, count, inner, ending] : rows) {
        EXPECT_EQ(Variant::fromJSON(repeat(opening, count) + inner + repeat(ending, count)).GetSize(), 1u);
    }
}

TEST(VariantJson, WritesNoNumberAsNullAndNoOptionsThatNestTooDeep)
{
    EXPECT_EQ(Variant(-INFINITY).GetJSON(true), "null");
    EXPECT_EQ(Variant(Vector(NAN, 1, INFINITY)).GetJSON(true), R"({"x":null,"y":1,"z":null})");
    Variant option = "deep";
    for (int level = 1; level <= 9; ++level) {
        Variant outer = Variant::TypeOption();
        outer[0] = option;
        option = outer;
        EXPECT_EQ(messageOf([&] { option.GetJSON(level % 2 == 0); }),
                  level <= 8 ? "nothing was thrown"
                             : "Unable to write options that nest deeper than 8 levels as JSON!");
    }
}
