#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace tesseralis::host {
/// The folders that modules come from, and the watch over what is loaded.
class Modules
{
public:
    enum class Trust
    {
        Nothing, ///< no module file is loaded at all
        Folders, ///< only files that lie in the folders, symbolic links resolved
        Everything
    };

    /// Without any folders, those beside the program hold: of the build or of the installation.
    Modules(std::vector<std::string> const & folders, Trust trust);

    /// Whether a file may be loaded.
    bool IsTrusted(std::string const & filename) const;
    /// The file of a module in one of the folders that has this name, on whatever platform it was named, if no folder
    /// stands with it; else the name in the form of this system.
    std::string GetPath(std::string const & filename) const;
    /// The name without its folder, if that is one of ours.
    std::string GetPortableName(std::string const & filename) const;
    /// All module files of the folders.
    std::vector<std::string> GetFiles() const;
    /// The folders in words, for messages.
    std::string GetDescription() const;

    /// Prints kind, name, version, core version, description and file of each module; names those that can't be read.
    void print(std::ostream & stream) const;
    /// Warns of a module that may not be loaded, can't be, or was built for another version of the library.
    void check(std::string const & filename, std::string const & object) const;

private:
    bool IsInFolder(std::string const & filename) const;
    bool IsFolder(std::filesystem::path const & path) const;
    /// Why a module can't be used.
    std::string GetProblem(std::string const & filename) const;

    std::vector<std::filesystem::path> m_folders;
    Trust m_trust;
};
} // namespace tesseralis::host
