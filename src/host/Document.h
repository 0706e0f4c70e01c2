#pragma once

#include "value/Archive.h"

#include <string>
#include <vector>

namespace tesseralis::host {
class Modules;

/// The document that the registry's objects come from and go to.
class Document
{
public:
    /// Modules are named in documents without their folder, as far as that is one of these.
    explicit Document(Modules const & modules) : m_modules(modules) {}

    /// Makes the objects of a file. Those of unknown types are skipped with a warning; they are kept as they are for
    /// save(). Throws Exception if the file can't be read or isn't a document of this system.
    void load(std::string const & filename);
    /// Replaces all objects, and what load() skipped, by those of a file that holds this text. If it isn't a document,
    /// nothing has been touched when the Exception comes; if its objects can't be made, the former ones are made again.
    void reload(std::string const & filename, std::string const & text);
    /// Writes all persistent objects, and what load() skipped, to a file. Throws Exception if it can't be written; the
    /// file is then what it was.
    void save(std::string const & filename) const;

private:
    void makeObjects(Archive & archive);
    void skipUnknownObjects(Archive & archive);
    void locateModule(ArchiveElement & element) const;

    Modules const & m_modules;
    Archive m_skipped;
};
} // namespace tesseralis::host
