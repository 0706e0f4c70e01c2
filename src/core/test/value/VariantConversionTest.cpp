#include "support/Values.h"

#include <bit>
#include <locale>

namespace {
std::string const c_vector = "(1;2;3)";
std::string const c_quaternion = "((1;2;3);4)";
std::string const c_box = "((1;2;3);(4;5;6))";
std::string const c_matrix = "((2;0;0;0);(0;2;0;0);(0;0;2;0);(0;0;0;2))";
std::string const c_color = "(1;2;3;4)";

Vector const s_vector(1, 2, 3);
Quaternion const s_quaternion(s_vector, 4);
Box const s_box(s_vector, Vector(4, 5, 6));
Matrix const s_matrix = Matrix() * 2.0f;
Color const s_color(1, 2, 3, 4);

/// The value as text, or the message of what reading it throws.
template <class T>
std::string read(Variant const & variant)
{
    std::ostringstream stream;
    std::string const message = messageOf([&] {
        T const value = variant;
        stream << value;
    });
    return stream.str().empty() ? message : stream.str();
}

template <class... T>
Texts readAll(Variant const & variant)
{
    return {read<T>(variant)...};
}

/// The texts after an assignment of each plain value, or the messages of what it throws.
template <class... T>
Texts writeAll(Variant const & target, T const &... values)
{
    auto const write = [&](auto const & value) {
        Variant changed = target;
        std::string const message = messageOf([&] { changed = value; });
        return message == "nothing was thrown" ? changed.operator std::string() : message;
    };
    return {write(values)...};
}

/// A cell of the tables that isn't a result: "-" stands for a type that is never taken or given, "?" for a text that is
/// no such value.
std::string expand(std::string const & cell, bool given, std::string const & type, std::string const & text)
{
    if (cell == "-") {
        return given ? notRetrieved("a value of type " + type) : notAssigned("a value of type " + type);
    }
    return cell == "?" ? notAssigned("a string value of '" + text + "'") : cell;
}

/// Everything that there is to know about a variant.
std::string describe(Variant const & variant)
{
    std::string text = std::to_string(variant.GetSize());
    return text + messageOf([&] { text += variant.GetJSON(false); }) + text;
}
} // namespace

TEST(VariantConversion, GivesWhatTheTypeAndTheValueAllow)
{
    struct Row
    {
        Variant source;
        std::string cells[9]; // string, bool, int, float, vector, quaternion, box, matrix, color
    };
    std::string const noVector = notRetrieved("a value of type vector");
    Row const rows[] = {
        {"1", {"1", "1", "1", "1", "?", "?", "?", "?", "?"}},
        {"TRUE", {"TRUE", "1", "1", "1", "?", "?", "?", "?", "?"}},
        {"12a", {"12a", "?", "?", "?", "?", "?", "?", "?", "?"}},
        {" -2.5 ", {" -2.5 ", "?", "?", "-2.5", "?", "?", "?", "?", "?"}},
        {"false ", {"false ", "?", "?", "?", "?", "?", "?", "?", "?"}},
        {Variant(c_vector), {c_vector, "?", "?", "?", c_vector, "?", "?", "?", "?"}},
        {Variant(c_box), {c_box, "?", "?", "?", "?", "?", c_box, "?", "?"}},
        {Variant(c_color + " x"), {c_color + " x", "?", "?", "?", "?", "?", "?", "?", "?"}},
        {true, {"true", "1", "1", "1", "-", "-", "-", "-", "-"}},
        {false, {"false", "0", "0", "0", "-", "-", "-", "-", "-"}},
        {0, {"0", "0", "0", "0", "-", "-", "-", "-", "-"}},
        {-5, {"-5", "-", "-5", "-5", "-", "-", "-", "-", "-"}},
        {1.0f, {"1", "1", "1", "1", "-", "-", "-", "-", "-"}},
        {1.23456789f, {"1.23457", "-", "-", "1.23457", "-", "-", "-", "-", "-"}},
        {3e9f, {"3e+09", "-", "-", "3e+09", "-", "-", "-", "-", "-"}},
        {s_vector, {c_vector, "-", "-", "-", c_vector, "-", "-", "-", "-"}},
        {s_quaternion, {c_quaternion, "-", "-", "-", "-", c_quaternion, "-", "-", "-"}},
        {s_box, {c_box, "-", "-", "-", "-", "-", c_box, "-", "-"}},
        {s_matrix, {c_matrix, "-", "-", "-", "-", "-", "-", c_matrix, "-"}},
        {s_color, {c_color, "-", "-", "-", "-", "-", "-", "-", c_color}},
        {array({1, 2, 3}),
         {"[3]", "-", "-", "-", c_vector, noVector, noVector, "((1;0;0;0);(0;1;0;0);(0;0;1;0);(0;0;0;1))",
          "(1;2;3;255)"}},
        {option({"7", 8}), {"7", "?", "7", "7", "?", "?", "?", "?", "?"}},
        {Variant::TypeFilename(";a;;b;"), {"a;b", "-", "-", "-", "-", "-", "-", "-", "-"}},
    };
    for (Row const & row : rows) {
        Variant const & source = row.source;
        std::string const text = source;
        SCOPED_TRACE(source.GetTypeName() + " " + text);
        Texts const results = readAll<std::string, bool, int, float, Vector, Quaternion, Box, Matrix, Color>(source);
        char const * const types[] = {"", "bool", "int", "int", "vector", "quaternion", "box", "matrix", "color"};
        for (std::size_t i = 0; i < results.size(); ++i) {
            EXPECT_EQ(results[i], expand(row.cells[i], true, types[i], text));
        }
    }
}

TEST(VariantConversion, TakesWhatTheTypeAndTheLimitsAllow)
{
    struct Row
    {
        Variant target;
        std::string cells[13];
    };
    auto const noClass = [](char const * type) { return expand("-", true, type, ""); };
    std::string const noInt5 = notAssigned("an integer value of 5");
    std::string const noFloat = notAssigned("a float value of '1.500000'");
    std::string const noFloat5 = notAssigned("a float value of '5.000000'");
    Row const rows[] = {
        // "1", "abc", "5", true, 1, 5, 1.0, 1.5, and a value of each class
        {"x", {"1", "abc", "5", "true", "1", "5", "1", "1.5", c_vector, c_quaternion, c_box, c_matrix, c_color}},
        {false,
         {"true", "?", "?", "true", "true", notAssigned("an integer value of '5'"), "true", noFloat, "-", "-", "-", "-",
          "-"}},
        {Variant(0, 0, 3), {"1", "?", noInt5, "1", "1", noInt5, "1", noFloat, "-", "-", "-", "-", "-"}},
        {Variant(0.0f, 0.0f, 3.0f), {"1", "?", noFloat5, "1", "1", noFloat5, "1", "1.5", "-", "-", "-", "-", "-"}},
        {Vector(), {"?", "?", "?", "-", "-", "-", "-", "-", c_vector, "-", "-", "-", "-"}},
        {Quaternion(), {"?", "?", "?", "-", "-", "-", "-", "-", "-", c_quaternion, "-", "-", "-"}},
        {Box(), {"?", "?", "?", "-", "-", "-", "-", "-", "-", "-", c_box, "-", "-"}},
        {Matrix(), {"?", "?", "?", "-", "-", "-", "-", "-", "-", "-", "-", c_matrix, "-"}},
        {Color(), {"?", "?", "?", "-", "-", "-", "-", "-", "-", "-", "-", "-", c_color}},
        {Variant::TypeArray(), {"[0]", "[0]", "[0]", "-", "-", "-", "-", "-", "[3]", "[2]", "[2]", "[4]", "[4]"}},
        {Variant::TypeMap(), {"[0]", "[0]", "[0]", "-", "-", "-", "-", "-", "[3]", "[2]", "[2]", "[4]", "[4]"}},
        {option({0, 1, 5}),
         {"1", "?", "5", "1", "1", "5", "1", noFloat, noClass("vector"), noClass("quaternion"), noClass("box"),
          noClass("matrix"), noClass("color")}},
        {Variant::TypeFilename(), {"1", "abc", "5", "-", "-", "-", "-", "-", "-", "-", "-", "-", "-"}},
    };
    for (Row const & row : rows) {
        Variant const & target = row.target;
        SCOPED_TRACE(target.GetTypeName());
        Texts const results =
            writeAll(target, "1", "abc", "5", true, 1, 5, 1.0f, 1.5f, s_vector, s_quaternion, s_box, s_matrix, s_color);
        char const * const types[] = {"1",   "abc",    "5",          "bool", "int",    "int",  "int",
                                      "int", "vector", "quaternion", "box",  "matrix", "color"};
        for (std::size_t i = 0; i < results.size(); ++i) {
            EXPECT_EQ(results[i], expand(row.cells[i], false, types[i], types[i]));
        }
    }
}

TEST(VariantConversion, FailsWithoutATraceAndIsToldBeforehandForAllPairs)
{
    Variant const samples = Variant::fromJSON(R"~([null, "abc", "2", "(1;2;3)", true, 2, 2.5,
        {"_type":"integer","_minimum":5,"_maximum":10,"_value":6}, {"_type":"float","_minimum":0,"_maximum":1.0},
        {"_type":"vector"}, {"_type":"quaternion"}, {"_type":"box"}, {"_type":"matrix"}, {"_type":"color"}, [], {},
        {"_type":"option"}, {"_type":"option","_value":[1,[1,2]]}, {"_type":"option","_value":[2,["abc",2]]}, [1,2],
        ["x",{"_type":"integer","_maximum":1},"z"],
        {"_type":"filename","_filter":"*.txt","_value":"a;b"}])~");
    for (unsigned int i = 0; i < samples.GetSize(); ++i) {
        Variant const & original = samples.GetElement(i);
        for (unsigned int j = 0; j < samples.GetSize(); ++j) {
            Variant const & source = samples.GetElement(j);
            SCOPED_TRACE(describe(original) + " takes " + describe(source));
            Variant target = original;
            Recorder recorder(target);
            std::string const message = messageOf([&] { target.assign(source); });
            bool const assigned = message == "nothing was thrown";

            EXPECT_EQ(original.IsAssignable(source), !original.IsDefined() || (source.IsDefined() && assigned));
            EXPECT_EQ(target.GetType(), original.IsDefined() ? original.GetType() : source.GetType());
            EXPECT_EQ(recorder.GetCount(), assigned && source.IsDefined() && original != source ? 1u : 0u);
            if (!assigned) {
                EXPECT_EQ(describe(target), describe(original));
            }
            // No bracket is open, and no event of the failed one is left.
            recorder.clear();
            target.beginModification();
            target.endModification();
            EXPECT_EQ(recorder.GetCount(), 1u);
        }
        for (int type = 0; type <= 15; ++type) {
            EXPECT_EQ(original.IsConvertable(Variant::Type(type)),
                      messageOf([&] { original.GetConverted(Variant::Type(type)); }) == "nothing was thrown");
        }
    }
}

TEST(VariantText, IsThatOfStreams)
{
    std::mt19937 random(1);
    auto const expectSameAs = [](std::string const & text, auto expected) {
        std::istringstream stream(text);
        bool const isOne = (stream >> std::ws >> expected) && (stream >> std::ws).eof();
        Variant const variant = text;
        ASSERT_EQ(variant.IsConvertable(Variant(expected).GetType()), isOne) << text;
        if (isOne) {
            ASSERT_EQ(static_cast<decltype(expected)>(variant), expected) << text;
        }
    };
    auto const expectSame = [&](std::string const & text) {
        expectSameAs(text, 0);
        expectSameAs(text, 0.0f);
    };
    std::istringstream texts(
        "+ - +5 -0 007 +-5 5x 2147483647 2147483648 -2147483648 -2147483649 1. .5 . -.5 1e 1e+ 1e5 "
        "1E-5 0x10 inf nan -inf infinity 1e39 -1e39 1e-46 -1e-400 1e-40 3.4028235e38 1,5 1e5.2 "
        "16777217 99999999999999999999 1e99999999999 0e99999999999");
    for (std::string text; texts >> text;) {
        expectSame(text);
        expectSame("\v " + text + "\f\n");
    }
    expectSame("");
    expectSame(" ");
    expectSame(std::string("5\0", 2));
    char const characters[] = "0123456789+-.eE \t";
    for (int i = 0; i < 20000; ++i) {
        std::string text;
        for (unsigned int length = random() % 9; length > 0; --length) {
            text += characters[random() % (sizeof(characters) - 1)];
        }
        expectSame(text);

        int const bits = static_cast<int>(random());
        float const number = std::bit_cast<float>(bits);
        std::ostringstream stream;
        stream << number;
        ASSERT_EQ(Variant(number).operator std::string(), stream.str());
        ASSERT_EQ(Variant(bits).operator std::string(), std::to_string(bits));
        expectSame(stream.str());
    }
}

TEST(VariantText, ComesBackAsTheSameValueInAnyLocale)
{
    struct Decimals : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const former = std::locale::global(std::locale(std::locale::classic(), new Decimals));
    for (Variant const & value :
         {Variant(1234567), Variant(0.5f), Variant(Vector(0.5f, 12345.5f, -1)), Variant(s_quaternion)}) {
        std::string const text = value;
        EXPECT_EQ(text.find(','), std::string::npos) << text;
        EXPECT_EQ(Variant(text).GetConverted(value.GetType()), value) << text;
    }
    std::locale::global(former);
}
