#pragma once

#include "support/Testing.h"

#include <fstream>

namespace tesseralis::test {
/// The file of one of the modules in plugin/modules.
inline std::string moduleFile(std::string const & name)
{
    return std::string(TEST_MODULES) + "libplugin_" + name + ".so";
}

/// A plug-in with the sample module of its kind, or with another of these modules.
template <class P>
std::unique_ptr<P> makePlugin(std::string const & module = "sample_" + P::GetTypeName())
{
    auto plugin = std::make_unique<P>();
    plugin->SetFilename(moduleFile(module));
    return plugin;
}

/// Whether the process has the code of a file mapped. A sanitizer that looks up names maps other pieces of it, and
/// keeps them.
inline bool isMapped(std::string const & filename)
{
    std::ifstream maps("/proc/self/maps");
    std::string line;
    while (std::getline(maps, line)) {
        if (line.find(" r-xp ") != std::string::npos && line.find(filename) != std::string::npos) {
            return true;
        }
    }
    return false;
}
} // namespace tesseralis::test
