#include "math/Vector.h"

#include "math/detail/Component.h"
#include "object/eatable.h"

#include <istream>
#include <ostream>

namespace tesseralis {
std::istream & operator>>(std::istream & stream, Vector & vector)
{
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    detail::readComponent(stream >> eatable("("), x);
    detail::readComponent(stream >> eatable(";"), y);
    detail::readComponent(stream >> eatable(";"), z);
    stream >> eatable(")");
    if (!stream.fail()) {
        vector.Set(x, y, z);
    }
    return stream;
}

std::ostream & operator<<(std::ostream & stream, Vector const & vector)
{
    return stream << "(" << vector.GetX() << ";" << vector.GetY() << ";" << vector.GetZ() << ")";
}
} // namespace tesseralis
