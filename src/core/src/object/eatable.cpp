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
    for (char const expected : m_literal) {
        int const character = stream.get(); // never skips white space
        if (!stream) {
            return;
        }
        if (character != std::char_traits<char>::to_int_type(expected)) {
            stream.setstate(std::ios_base::failbit);
            return;
        }
    }

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
