#pragma once

#include "support/Testing.h"

#include <fstream>

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
    std::stringstream text;
    text << maps.rdbuf();
    return text.str().find(filename) != std::string::npos;
}
} // namespace tesseralis::test
