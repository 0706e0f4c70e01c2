#pragma once

#include "object/Export.h"

#include <iosfwd>
#include <string>

namespace tesseralis {
/// An absolute path and its parts as splitPath() gives them; drive, directory, name and extension put together are the
/// path. The file need not exist. A file right inside a first directory, such as /data/head.raw, has no directory and a
/// name that begins with the separator; a file in the root itself is all drive, so what is its sibling lands below it.
class TESSERALIS_API Filename
{
public:
    Filename() = default;
    explicit Filename(std::string const & path) { Set(path); }
    Filename(std::string const & drive, std::string const & directory, std::string const & name,
             std::string const & extension);

    std::string const & GetPath() const { return m_path; }
    std::string const & GetDrive() const { return m_drive; }
    std::string const & GetDirectory() const { return m_directory; }
    std::string const & GetName() const { return m_name; }
    std::string const & GetExtension() const { return m_extension; }
    std::string GetDriveDirectory() const { return m_drive + m_directory; }
    std::string GetNameExtension() const { return m_name + m_extension; }
    operator std::string() const { return m_path; }

    /// Another file in the neighbourhood: on the same drive, in the same directory, of the same name.
    Filename GetSibling(std::string const & directory, std::string const & name, std::string const & extension) const;
    Filename GetSibling(std::string const & name, std::string const & extension) const;
    Filename GetSibling(std::string const & extension) const;

    /// Compares the paths as they stand.
    bool operator==(Filename const & other) const { return m_path == other.m_path; }

    /// A relative path is taken from the current directory; an empty one gives an empty filename.
    void Set(std::string const & path);
    /// Joins the parts as makePath() does. Without a drive the directory is one of this system's: from the root if it
    /// begins with the separator, else from the current directory.
    void Set(std::string const & drive, std::string const & directory, std::string const & name,
             std::string const & extension);
    Filename & operator=(std::string const & path);

private:
    std::string m_path;
    std::string m_drive;
    std::string m_directory;
    std::string m_name;
    std::string m_extension;
};

/// Writes the path.
TESSERALIS_API std::ostream & operator<<(std::ostream & stream, Filename const & filename);
/// Reads one word, so a path with white space in it doesn't come back whole. The filename stays as it was if there is
/// none.
TESSERALIS_API std::istream & operator>>(std::istream & stream, Filename & filename);
} // namespace tesseralis
