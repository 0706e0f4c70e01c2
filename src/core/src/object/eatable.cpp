#include "object/eatable.h"

#include <istream>

namespace tesseralis {
void eatable::eat(std::istream & stream) const
{
    if (m_literal.empty()) {
        return;
    }

    if (stream.good()) {
        stream >> std::ws;
    }
    std::ios_base::fmtflags const flags = stream.flags();
    stream >> std::noskipws;
    for (char const expected : m_literal) {
        char character;
        if (!(stream >> character)) {
            break;
        }
        if (character != expected) {
            stream.setstate(std::ios_base::failbit);
            break;
        }
    }
    stream.flags(flags);
    if (stream.good()) {
        stream >> std::ws;
    }
}

std::istream & operator>>(std::istream & stream, eatable const & literal)
{
    literal.eat(stream);
    return stream;
}
} // namespace tesseralis
