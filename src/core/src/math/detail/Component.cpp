#include "math/detail/Component.h"

#include "object/eatable.h"

#include <cmath>
#include <istream>
#include <limits>

namespace tesseralis::detail {
std::istream & readComponent(std::istream & stream, float & component)
{
    stream >> std::ws;
    bool const isNegative = stream.peek() == '-';
    if (isNegative) {
        stream.get();
    }
    int const first = stream.peek();
    if (first == 'i' || first == 'n') {
        stream >> eatable(first == 'i' ? "inf" : "nan");
        if (stream) {
            using Limits = std::numeric_limits<float>;
            component =
                std::copysign(first == 'i' ? Limits::infinity() : Limits::quiet_NaN(), isNegative ? -1.0f : 1.0f);
        }
        return stream;
    }

    if (isNegative) {
        stream.unget();
    }
    float number = 0.0f;
    if (stream >> number) {
        component = number;
    }
    return stream;
}
} // namespace tesseralis::detail
