#pragma once

#include "object/Export.h"

#include <string>

namespace tesseralis {
/// A reference to a loaded shared object, which stays loaded as long as there is one. A copy has its own reference.
class TESSERALIS_API Library
{
public:
    Library() = default;
    /// Loads a file. Where that fails the library isn't initialised, and nothing is thrown.
    explicit Library(std::string const & filename);
    Library(Library const & other);
    /// Releases its module first, so a pointer into it is good only while another library holds it.
    Library & operator=(Library const & other);
    /// Hand the reference over.
    Library(Library && other) noexcept;
    Library & operator=(Library && other) noexcept;
    ~Library();

    bool IsInitialized() const { return m_module != nullptr; }
    /// Why the file that this thread tried last could not be loaded, in the system's words. To be asked right behind
    /// that.
    static std::string GetLoadError();
    /// Name with extension, as Filename gives them: with a leading separator for a file right inside a first directory.
    /// This and what follows ask the system where it found the module, and are empty when nothing is loaded.
    std::string GetFilename() const;
    /// Drive and directory.
    std::string GetDirectory() const;
    std::string GetPath() const;
    /// The address of an exported function or variable; null if there is none of the name or nothing is loaded.
    void * GetProcedure(std::string const & name) const;

    /// Gives up the reference.
    void uninitialize();

private:
    void * m_module = nullptr;
};
} // namespace tesseralis
