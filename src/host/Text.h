#pragma once

#include <cstddef>
#include <string>

namespace tesseralis {
class Variant;
}

namespace tesseralis::host {
/// A text on one line: line breaks, control characters, bytes that are no UTF-8, and backslashes are written as
/// escapes, so that nothing a document holds reaches the terminal as a command.
std::string onOneLine(std::string const & text);

/// A message that quotes texts of others: the same with backslashes as they are, and cut where it gets too long.
std::string asMessage(std::string const & text);

/// A value on one line: compounds as JSON, others as their text; empty if it has none.
std::string toLine(Variant const & value);

/// The places that a text takes on a terminal, one for a character.
std::size_t widthOf(std::string const & text);
} // namespace tesseralis::host
