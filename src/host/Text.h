#pragma once

#include <string>

namespace tesseralis {
class Variant;
}

namespace tesseralis::host {
/// A text on one line: line breaks, control characters and backslashes are written as escapes, so that nothing a
/// document holds reaches the terminal as a command.
std::string onOneLine(std::string const & text);

/// A value on one line: compounds as JSON, others as their text; empty if it has none.
std::string toLine(Variant const & value);
} // namespace tesseralis::host
