#pragma once

#include <cstdint>

namespace tesseralis::detail {
/// The text attribute that standard output has now: the sum of 1 for blue, 2 for green, 4 for red and 8 for bright. A
/// terminal can't be asked, so this is a value beyond them, which stands for the terminal's own colour.
std::uint16_t textAttribute();

/// Gives what is written to standard output from now on an attribute. Does nothing where that is no terminal.
void setTextAttribute(std::uint16_t attribute);
} // namespace tesseralis::detail
