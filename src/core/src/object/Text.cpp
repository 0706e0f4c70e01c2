#include "object/Text.h"

namespace tesseralis {
std::string trimLeft(std::string const & text, std::string const & characters)
{
    std::size_t const first = text.find_first_not_of(characters);
    return first != std::string::npos ? text.substr(first) : std::string();
}

std::string trimRight(std::string const & text, std::string const & characters)
{
    std::size_t const last = text.find_last_not_of(characters);
    return last != std::string::npos ? text.substr(0, last + 1) : text;
}

std::string trim(std::string const & text, std::string const & characters)
{
    return trimRight(trimLeft(text, characters), characters);
}
} // namespace tesseralis
