#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>
#include <string>

namespace tesseralis::test {
/// The file of one of the modules in plugin/modules.
inline std::string moduleFile(std::string const & name)
{
    return std::string(TEST_MODULES) + "libplugin_" + name + ".so";
}

/// Whether the process has a file mapped.
inline bool isMapped(std::string const & filename)
{
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(filename) != std::string::npos) {
            return true;
        }
    }
    return false;
}

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
} // namespace tesseralis::test
