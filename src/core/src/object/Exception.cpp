#include "object/Exception.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <ostream>

namespace tesseralis {
namespace {
constexpr int c_longestMessage = 65535;
}

Exception::Exception(char const * format, ...)
{
    if (format == nullptr) {
        return;
    }

    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    int const length = std::clamp(std::vsnprintf(nullptr, 0, format, arguments), 0, c_longestMessage);
    m_message.resize(static_cast<std::size_t>(length));
    std::vsnprintf(m_message.data(), m_message.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
}

std::ostream & operator<<(std::ostream & stream, Exception const & exception)
{
    return stream << exception.GetMessage();
}
} // namespace tesseralis
