#include "object/Library.h"

#include "object/Filename.h"
#include "object/platform/Module.h"

#include <utility>

namespace tesseralis {
Library::Library(std::string const & filename) : m_module(detail::loadModule(filename)) {}

Library::Library(Library const & other) : Library(other.GetPath()) {}

Library & Library::operator=(Library const & other)
{
    if (this != &other) {
        uninitialize();
        m_module = detail::loadModule(other.GetPath());
    }
    return *this;
}

Library::Library(Library && other) noexcept : m_module(std::exchange(other.m_module, nullptr)) {}

Library & Library::operator=(Library && other) noexcept
{
    if (this != &other) {
        uninitialize();
        m_module = std::exchange(other.m_module, nullptr);
    }
    return *this;
}

Library::~Library()
{
    uninitialize();
}

std::string Library::GetLoadError()
{
    return detail::loadError();
}

std::string Library::GetFilename() const
{
    return Filename(GetPath()).GetNameExtension();
}

std::string Library::GetDirectory() const
{
    return Filename(GetPath()).GetDriveDirectory();
}

std::string Library::GetPath() const
{
    return IsInitialized() ? detail::modulePath(m_module) : std::string();
}

void * Library::GetProcedure(std::string const & name) const
{
    return IsInitialized() ? detail::findSymbol(m_module, name) : nullptr;
}

void Library::uninitialize()
{
    if (IsInitialized()) {
        detail::unloadModule(m_module);
        m_module = nullptr;
    }
}
} // namespace tesseralis
