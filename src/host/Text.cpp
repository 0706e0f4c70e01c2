#include "Text.h"

#include "object/Exception.h"
#include "value/Variant.h"

#include <algorithm>
#include <cstdio>

namespace tesseralis::host {
namespace {
bool IsContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

/// The length of the character at a place, if it may go to a terminal: no control character, no broken UTF-8. Else 0.
std::size_t printableLength(std::string const & text, std::size_t position)
{
    auto const lead = static_cast<unsigned char>(text[position]);
    if (lead < 0x80) {
        return lead >= 0x20 && lead != 0x7f ? 1 : 0;
    }
    std::size_t const length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc2 || lead > 0xf4 || position + length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[position + i])) {
            return 0;
        }
    }
    bool const isControl = lead == 0xc2 && static_cast<unsigned char>(text[position + 1]) < 0xa0;
    return isControl ? 0 : length;
}

std::string escape(std::string const & text, bool withBackslashes)
{
    std::string line;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const length = printableLength(text, i);
        if (length == 0) {
            char code[5];
            std::snprintf(code, sizeof(code), "\\x%02x", static_cast<unsigned char>(text[i]));
            line += text[i] == '\n' ? "\\n" : code;
        } else {
            line += withBackslashes && text[i] == '\\' ? "\\\\" : text.substr(i, length);
        }
        i += std::max<std::size_t>(length, 1);
    }
    return line;
}
} // namespace

std::string onOneLine(std::string const & text)
{
    return escape(text, true);
}

std::string asMessage(std::string const & text)
{
    constexpr std::size_t c_longest = 1000;
    return text.size() <= c_longest ? escape(text, false) : escape(text.substr(0, c_longest), false) + " ...";
}

std::string toLine(Variant const & value)
{
    if (!value.IsDefined()) {
        return std::string();
    }
    try {
        bool const compound = value.GetType() == Variant::Type::Array || value.GetType() == Variant::Type::Map;
        return compound ? escape(value.GetJSON(true), false) : onOneLine(value);
    } catch (Exception const &) {
        return std::string(); // an option in which nothing is selected
    }
}

std::size_t widthOf(std::string const & text)
{
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), IsContinuation));
}
} // namespace tesseralis::host
