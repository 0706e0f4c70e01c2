#include "Text.h"

#include "object/Exception.h"
#include "value/Variant.h"

#include <cstdio>

namespace tesseralis::host {
std::string onOneLine(std::string const & text)
{
    std::string line;
    for (char const character : text) {
        auto const code = static_cast<unsigned char>(character);
        if (character == '\n') {
            line += "\\n";
        } else if (character == '\\') {
            line += "\\\\";
        } else if (code < 0x20 || code == 0x7f) {
            char escape[5];
            std::snprintf(escape, sizeof(escape), "\\x%02x", code);
            line += escape;
        } else {
            line += character;
        }
    }
    return line;
}

std::string toLine(Variant const & value)
{
    if (!value.IsDefined()) {
        return std::string();
    }
    try {
        bool const compound = value.GetType() == Variant::Type::Array || value.GetType() == Variant::Type::Map;
        return compound ? value.GetJSON(true) : onOneLine(value);
    } catch (Exception const &) {
        return std::string(); // an option in which nothing is selected
    }
}
} // namespace tesseralis::host
