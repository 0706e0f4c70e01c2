#include "object/platform/Files.h"

#include <filesystem>
#include <system_error>

namespace tesseralis::detail {
std::string absolutePath(std::string const & path)
{
    std::error_code error;
    std::filesystem::path const absolute = std::filesystem::absolute(path, error);
    if (error) {
        return std::string();
    }

    std::string const normal = absolute.lexically_normal().string();
    return normal.starts_with("//") ? "/" : normal; // only a root of several slashes stays as it was
}

std::list<std::string> directoryEntries(std::string const & directory)
{
    std::list<std::string> names;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    return names;
}
} // namespace tesseralis::detail
