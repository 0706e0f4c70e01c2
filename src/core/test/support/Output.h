#pragma once

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <utility>

namespace tesseralis::test {
/// What a callable writes to standard output, and to standard error.
template <class Callable>
std::pair<std::string, std::string> outputOf(Callable && callable)
{
    std::cout.flush();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    callable();
    std::cout.flush();
    std::string const output = testing::internal::GetCapturedStdout();
    return {output, testing::internal::GetCapturedStderr()};
}

/// What a callable writes to the log.
template <class Callable>
std::string logOf(Callable && callable)
{
    return outputOf(callable).first;
}
} // namespace tesseralis::test
