#pragma once

#include "object/Export.h"

#include <iosfwd>
#include <string>

namespace tesseralis {
/// The one error type of the library: a sentence that says what failed. Thrown by value, caught as Exception const &.
class TESSERALIS_API Exception
{
public:
    Exception() = default;
    explicit Exception(std::string const & message) : m_message(message) {}
    /// Formats the message by the rules of printf; a text beyond 65,535 bytes is cut there, a null format gives an
    /// empty message.
    explicit Exception(char const * format, ...) __attribute__((format(printf, 2, 3)));

    std::string const & GetMessage() const { return m_message; }

private:
    std::string m_message;
};

/// Writes the message.
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Exception const & exception);
} // namespace tesseralis
