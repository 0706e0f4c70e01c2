#include "object/platform/Console.h"

#include <iostream>

#include <unistd.h>

namespace tesseralis::detail {
namespace {
constexpr std::uint16_t c_ownColour = 16;

// The select-graphic-rendition sequence of each attribute: the bits of red and blue are swapped there.
constexpr char const * c_sequences[] = {
    "\x1b[30m", "\x1b[34m", "\x1b[32m", "\x1b[36m", "\x1b[31m", "\x1b[35m", "\x1b[33m", "\x1b[37m", "\x1b[90m",
    "\x1b[94m", "\x1b[92m", "\x1b[96m", "\x1b[91m", "\x1b[95m", "\x1b[93m", "\x1b[97m", "\x1b[0m",
};
} // namespace

std::uint16_t textAttribute()
{
    return c_ownColour;
}

void setTextAttribute(std::uint16_t attribute)
{
    if (attribute <= c_ownColour && isatty(STDOUT_FILENO) != 0) {
        std::cout << c_sequences[attribute];
    }
}
} // namespace tesseralis::detail
