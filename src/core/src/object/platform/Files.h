#pragma once

#include <list>
#include <string>

namespace tesseralis::detail {
/// The path from the root of the file system, without "." and ".." components; symbolic links stay as they are. Empty
/// for an empty path, or where the current directory is gone.
std::string absolutePath(std::string const & path);

/// The names of everything in a directory but "." and "..", in the system's order; empty if it can't be read.
std::list<std::string> directoryEntries(std::string const & directory);
} // namespace tesseralis::detail
