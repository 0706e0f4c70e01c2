#pragma once

#include "object/Export.h"

#include <utility>

namespace tesseralis::detail {
/// Writes the exception that is being handled to the log, as an error. For use in a catch block.
TESSERALIS_API void logCaughtException() noexcept;

/// Runs something that must not throw, such as what a destructor calls: what comes out of it goes to the log.
template <class Callable>
void runGuarded(Callable && callable) noexcept
{
    try {
        std::forward<Callable>(callable)();
    } catch (...) {
        logCaughtException();
    }
}
} // namespace tesseralis::detail
