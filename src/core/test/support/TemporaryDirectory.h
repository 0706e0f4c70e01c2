#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include <stdlib.h>

namespace tesseralis::test {
/// A fresh directory that goes with everything in it.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::string path = (std::filesystem::temp_directory_path() / "tesseralis.XXXXXX").string();
        if (mkdtemp(path.data()) == nullptr) {
            throw std::runtime_error("Can't make a temporary directory.");
        }
        m_path = path;
    }
    ~TemporaryDirectory()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path, error);
    }
    TemporaryDirectory(TemporaryDirectory const &) = delete;
    TemporaryDirectory & operator=(TemporaryDirectory const &) = delete;

    /// The path of a file in it; with an empty name, of the directory with its trailing separator.
    std::string GetPath(std::string const & name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};
} // namespace tesseralis::test
