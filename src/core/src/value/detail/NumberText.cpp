#include "value/detail/NumberText.h"

#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"
#include "object/Exception.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>

namespace tesseralis::detail {
namespace {
bool IsSpace(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

char toLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Whether a text is the given lower case word, in any case.
bool IsWord(std::string const & text, std::string_view word)
{
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char left, char right) { return toLower(left) == right; });
}

std::string_view GetTrimmed(std::string_view text)
{
    while (!text.empty() && IsSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// What std::from_chars shall read. It takes no plus sign as a stream does, but the names of infinities and
/// not-a-number, which a stream refuses.
std::string_view GetDigits(std::string_view text)
{
    std::string_view digits = GetTrimmed(text);
    bool const plus = digits.starts_with('+');
    if (plus) {
        digits.remove_prefix(1);
    }

    std::size_t const first = !plus && digits.starts_with('-') ? 1 : 0;
    bool const begins =
        first < digits.size() && (digits[first] == '.' || (digits[first] >= '0' && digits[first] <= '9'));
    return begins ? digits : std::string_view();
}

template <class T>
bool parseByStream(std::string const & text, T & value)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    T parsed = T();
    stream >> std::ws >> parsed;
    if (stream.fail()) {
        return false;
    }

    if (!stream.eof()) {
        stream >> std::ws;
    }
    if (!stream.eof()) {
        return false;
    }
    value = parsed;
    return true;
}

template <class Number>
bool parseNumber(std::string const & text, Number & value)
{
    std::string_view const digits = GetDigits(text);
    Number parsed;
    auto const [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), parsed);
    if (error == std::errc::result_out_of_range) {
        // To a stream, a number too close to 0 isn't out of range.
        return parseByStream(text, value);
    }
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return false;
    }
    value = parsed;
    return true;
}

template <class... Format>
void appendNumber(std::string & text, Format... format)
{
    char buffer[32];
    auto const [end, error] = std::to_chars(buffer, buffer + sizeof(buffer), format...);
    text.append(buffer, end);
}

bool parseAssigned(std::string const & text, bool & value)
{
    bool const isTrue = text == "1" || IsWord(text, "true");
    if (!isTrue && text != "0" && !IsWord(text, "false")) {
        return false;
    }
    value = isTrue;
    return true;
}

template <class Number>
bool parseAssignedNumber(std::string const & text, Number & value)
{
    bool const isTrue = IsWord(text, "true");
    if (!isTrue && !IsWord(text, "false")) {
        return parseText(text, value);
    }
    value = isTrue ? Number(1) : Number(0);
    return true;
}

bool parseAssigned(std::string const & text, int & value)
{
    return parseAssignedNumber(text, value);
}

bool parseAssigned(std::string const & text, float & value)
{
    return parseAssignedNumber(text, value);
}

template <class T>
bool parseAssigned(std::string const & text, T & value)
{
    return parseText(text, value);
}
} // namespace

std::string toText(bool value)
{
    return value ? "true" : "false";
}

std::string toText(int value)
{
    std::string text;
    appendText(text, value);
    return text;
}

std::string toText(float value)
{
    std::string text;
    appendText(text, value);
    return text;
}

template <class T>
std::string toText(T const & value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

void appendText(std::string & text, int value)
{
    appendNumber(text, value);
}

void appendText(std::string & text, float value)
{
    appendNumber(text, value, std::chars_format::general, 6);
}

bool parseText(std::string const & text, int & value)
{
    return parseNumber(text, value);
}

bool parseText(std::string const & text, float & value)
{
    return parseNumber(text, value);
}

template <class T>
bool parseText(std::string const & text, T & value)
{
    return parseByStream(text, value);
}

bool parseIndex(std::string const & text, unsigned int & index)
{
    int number = 0;
    if (!parseText(text, number) || number < 0) {
        return false;
    }
    index = static_cast<unsigned int>(number);
    return true;
}

bool parseNonFinite(std::string const & text, float & value)
{
    bool const isNegative = text.starts_with('-');
    std::string_view const word = std::string_view(text).substr(isNegative ? 1 : 0);
    if (word != "inf" && word != "nan") {
        return false;
    }
    float const size = word == "inf" ? std::numeric_limits<float>::infinity() : std::numeric_limits<float>::quiet_NaN();
    value = isNegative ? -size : size;
    return true;
}

template <class Number>
Number readNumber(std::string const & text)
{
    Number value = 0;
    if (!parseText(text, value)) {
        std::istringstream stream(text);
        stream.imbue(std::locale::classic());
        stream >> value;
    }
    return value;
}

template <class T>
T readText(std::string const & text)
{
    T value = T();
    if (!parseAssigned(text, value)) {
        throw Exception("Unable to assign a string value of '%s' to this variant!", text.c_str());
    }
    return value;
}

bool IsWhole(float value, int & whole)
{
    // The negative limit is a float; the positive one isn't, but 2^31 is.
    bool const inRange = value >= -2147483648.0f && value < 2147483648.0f;
    if (!inRange || static_cast<float>(static_cast<int>(value)) != value) {
        return false;
    }
    whole = static_cast<int>(value);
    return true;
}

template int readNumber<int>(std::string const &);
template float readNumber<float>(std::string const &);
template bool readText<bool>(std::string const &);
template int readText<int>(std::string const &);
template float readText<float>(std::string const &);

#define TESSERALIS_CLASS_TEXT(T)                                                                                       \
    template std::string toText<T>(T const &);                                                                         \
    template bool parseText<T>(std::string const &, T &);                                                              \
    template T readText<T>(std::string const &);
TESSERALIS_CLASS_TEXT(Vector)
TESSERALIS_CLASS_TEXT(Quaternion)
TESSERALIS_CLASS_TEXT(Box)
TESSERALIS_CLASS_TEXT(Matrix)
TESSERALIS_CLASS_TEXT(Color)
#undef TESSERALIS_CLASS_TEXT
} // namespace tesseralis::detail
