#include "math/Box.h"
#include "math/Color.h"
#include "math/Matrix.h"
#include "math/Quaternion.h"
#include "math/Vector.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <sstream>

using namespace tesseralis;

namespace {
void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

/// Whether two values are the same bit by bit.
template <class T>
bool isSame(T const & a, T const & b)
{
    using Bytes = std::array<std::uint8_t, sizeof(T)>;
    return std::bit_cast<Bytes>(a) == std::bit_cast<Bytes>(b);
}

// The streams are used again, since making one takes longer than reading from it.

template <class T>
bool read(std::string const & text, T & value)
{
    static std::istringstream s_stream;
    s_stream.clear();
    s_stream.str(text);
    s_stream >> value;
    return !s_stream.fail();
}

template <class T>
std::string write(T const & value)
{
    static std::ostringstream s_stream;
    s_stream.precision(std::numeric_limits<float>::max_digits10);
    s_stream.str(std::string());
    s_stream << value;
    return s_stream.str();
}

/// What can be read reads the same again after it was written; what can't be read leaves the target alone.
template <class T>
void checkText(std::string const & text, T const & initial)
{
    T value = initial;
    if (!read(text, value)) {
        require(isSame(value, initial));
        return;
    }
    T again = initial;
    require(read(write(value), again));
    require(isSame(value, again));
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const *>(data), size);
    checkText(text, Vector(1, 2, 3));
    checkText(text, Matrix() * 2.0f);
    checkText(text, Quaternion(Vector(1, 2, 3), 4));
    checkText(text, Box(Vector(1, 2, 3), Vector(4, 5, 6)));
    checkText(text, Color(1, 2, 3, 4));
    return 0;
}
