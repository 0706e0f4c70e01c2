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
        if (mkdtemp(m_path.data()) == nullptr) {
            throw std::runtime_error("Can't make a temporary directory.");
        }
    }
    ~TemporaryDirectory() { std::filesystem::remove_all(m_path); }
    TemporaryDirectory(TemporaryDirectory const &) = delete;
    TemporaryDirectory & operator=(TemporaryDirectory const &) = delete;

    /// The path of a file in it; with an empty name, of the directory with its trailing separator.
    std::string GetPath(std::string const & name) const { return m_path + "/" + name; }

private:
    std::string m_path = (std::filesystem::temp_directory_path() / "tesseralis.XXXXXX").string();
};
} // namespace tesseralis::test
