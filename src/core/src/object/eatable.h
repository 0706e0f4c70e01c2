#pragma once

#include "object/Export.h"

#include <iosfwd>
#include <string>

namespace tesseralis {
/// A literal that a stream must hold next, for chains such as `stream >> eatable("(") >> x >> eatable(")")`.
class TESSERALIS_API eatable
{
public:
    explicit eatable(std::string const & literal) : m_literal(literal) {}

    /// Reads the literal with any white space round it. A mismatch sets the stream's fail bit; an empty literal reads
    /// nothing. The stream's format flags are as before.
    void eat(std::istream & stream) const;

private:
    std::string m_literal;
};

TESSERALIS_API std::istream & operator>>(std::istream & stream, eatable const & literal);
} // namespace tesseralis
