#include "support/Values.h"

#include <iomanip>
#include <type_traits>

namespace {
/// Writes a value and reads it back, as it is and with white space round its signs. Then reads wrong texts, which must
/// fail and leave the value: such as are cut off anywhere, one with commas, and those given.
template <class T>
void checkText(T const & value, std::string const & expected, std::vector<std::string> badTexts = {})
{
    static_assert(std::is_trivially_copyable_v<T>);
    std::stringstream stream;
    stream << std::setprecision(9) << value;
    EXPECT_EQ(stream.str(), expected);
    std::stringstream spaced;
    for (char const character : expected) {
        bool const isSign = std::string("(;)").find(character) != std::string::npos;
        spaced << (isSign ? " " : "") << character << (isSign ? "\n" : "");
    }
    T target;
    EXPECT_TRUE(stream >> target) << expected;
    EXPECT_EQ(target, value) << expected;
    EXPECT_TRUE(spaced >> target) << expected;
    EXPECT_EQ(target, value) << expected;

    for (std::size_t length = 0; length < expected.size(); ++length) {
        badTexts.push_back(expected.substr(0, length));
    }
    badTexts.push_back(expected);
    std::replace(badTexts.back().begin(), badTexts.back().end(), ';', ',');
    for (std::string const & text : badTexts) {
        std::istringstream badStream(text);
        EXPECT_FALSE(badStream >> target) << text;
        EXPECT_EQ(target, value) << text;
    }
}
} // namespace

TEST(ValueText, ReadsBackWhatItWritesAndNothingElse)
{
    checkText(Vector(1, 2.5f, -3), "(1;2.5;-3)",
              {"1;2;3", "(1;2;3;4)", "(;2;3)", "(1;2;na)", "(1;2;- inf)", "(1;2;+inf)", "(1;2;1e99)",
               "(" + std::string(100000, '9') + ";1;2)", std::string("(1;2\0;3)", 8)});
    checkText(Vector(1.0f / 3, 3.4028235e38f, -1e-40f), "(0.333333343;3.40282347e+38;-9.9999461e-41)");
    checkText(Vector(INFINITY, -INFINITY, -0.5f), "(inf;-inf;-0.5)", {"(inf;-inf;-nan0)", "(inf;--inf;0)"});
    checkText(Matrix(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16),
              "((1;5;9;13);(2;6;10;14);(3;7;11;15);(4;8;12;16))", {"((1;5;9);(2;6;10;14);(3;7;11;15);(4;8;12;16))"});
    checkText(Quaternion(Vector(0, 0.5f, -0.5f), 1.0f), "((0;0.5;-0.5);1)", {"(0;0;0;1)", "((0;0;0);(1;1;1))"});
    checkText(Box(Vector(1, 2, 3), Vector(4, 5, 6)), "((1;2;3);(4;5;6))", {"(1;2;3);(4;5;6)", "((1;2;3);4)"});
    checkText(Box(),
              "((3.40282347e+38;3.40282347e+38;3.40282347e+38);(-3.40282347e+38;-3.40282347e+38;-3.40282347e+38))");
    checkText(Color(255, 128, 0, 10), "(255;128;0;10)",
              {"(1;2;3;256)", "(-1;2;3;4)", "(1.5;2;3;4)", "(1;2;3;99999999999)"});
}

TEST(ValueText, HoldsDecimalBytesInAnyStream)
{
    std::stringstream stream;
    stream << std::hex << Color(16, 32, 64, 128) << 16;
    EXPECT_EQ(stream.str(), "(16;32;64;128)10");
    Color color;
    int number = 0;
    stream >> color >> number;
    EXPECT_EQ(color, Color(16, 32, 64, 128));
    EXPECT_EQ(number, 16);
}
