#pragma once

#include "support/Output.h"

#include <fstream>
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
} // namespace tesseralis::test
