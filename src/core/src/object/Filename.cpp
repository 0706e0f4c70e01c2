#include "object/Filename.h"

#include "object/Path.h"
#include "object/platform/Files.h"

#include <istream>
#include <ostream>
#include <utility>

namespace tesseralis {
Filename::Filename(std::string const & drive, std::string const & directory, std::string const & name,
                   std::string const & extension)
{
    Set(drive, directory, name, extension);
}

Filename Filename::GetSibling(std::string const & directory, std::string const & name,
                              std::string const & extension) const
{
    return Filename(m_drive, directory, name, extension);
}

Filename Filename::GetSibling(std::string const & name, std::string const & extension) const
{
    return Filename(m_drive, m_directory, name, extension);
}

Filename Filename::GetSibling(std::string const & extension) const
{
    return Filename(m_drive, m_directory, m_name, extension);
}

void Filename::Set(std::string const & path)
{
    m_path = detail::absolutePath(path);
    PathParts parts = splitPath(m_path);
    m_drive = std::move(parts.drive);
    m_directory = std::move(parts.directory);
    m_name = std::move(parts.name);
    m_extension = std::move(parts.extension);
}

void Filename::Set(std::string const & drive, std::string const & directory, std::string const & name,
                   std::string const & extension)
{
    if (drive.empty() && !directory.empty()) {
        Set(makePath({detail::absolutePath(directory), "", name, extension}));
    } else {
        Set(makePath({drive, directory, name, extension}));
    }
}

Filename & Filename::operator=(std::string const & path)
{
    Set(path);
    return *this;
}

std::ostream & operator<<(std::ostream & stream, Filename const & filename)
{
    return stream << filename.GetPath();
}

std::istream & operator>>(std::istream & stream, Filename & filename)
{
    std::string path;
    if (stream >> path) {
        filename.Set(path);
    }
    return stream;
}
} // namespace tesseralis
