#pragma once

#include "object/Exception.h"

#include <string>

namespace tesseralis::test {
/// The message of the Exception that the callable throws; "nothing was thrown" where it throws none.
template <class Callable>
std::string messageOf(Callable && callable)
{
    try {
        callable();
    } catch (Exception const & exception) {
        return exception.GetMessage();
    }
    return "nothing was thrown";
}
} // namespace tesseralis::test
