#include "Modules.h"

#include "Text.h"

#include "object/Path.h"
#include "object/Tesseralis.h"
#include "object/Version.h"
#include "plugin/ModuleGuard.h"
#include "plugin/Plugin.h"

#include <algorithm>
#include <iostream>

namespace tesseralis::host {
namespace {
namespace fs = std::filesystem;

std::vector<fs::path> foldersBesideProgram()
{
    std::error_code error;
    fs::path const program = fs::read_symlink("/proc/self/exe", error).parent_path();
    std::vector<fs::path> folders;
    for (char const * const relative : {TESSERALIS_BUILD_MODULES, TESSERALIS_INSTALLED_MODULES}) {
        if (fs::is_directory(program / relative, error)) {
            folders.push_back(fs::canonical(program / relative, error));
        }
    }
    return folders;
}
} // namespace

Modules::Modules(std::vector<std::string> const & folders, Trust trust)
    : m_folders(folders.begin(), folders.end()), m_trust(trust)
{
    if (folders.empty()) {
        m_folders = foldersBesideProgram();
    }
}

bool Modules::IsTrusted(std::string const & filename) const
{
    return m_trust == Trust::Everything || (m_trust == Trust::Folders && IsInFolder(filename));
}

bool Modules::IsInFolder(std::string const & filename) const
{
    std::error_code error;
    fs::path const file = fs::canonical(filename, error);
    return !error && IsFolder(file.parent_path());
}

bool Modules::IsFolder(std::filesystem::path const & path) const
{
    return std::any_of(m_folders.begin(), m_folders.end(), [&](fs::path const & folder) {
        std::error_code error;
        return fs::equivalent(folder, path, error);
    });
}

std::string Modules::GetProblem(std::string const & filename) const
{
    if (m_trust == Trust::Nothing) {
        return "no module is loaded at all";
    }
    if (!IsTrusted(filename)) {
        return "it lies outside the module folders (--trust allows it)";
    }
    Library const library = ModuleGuard::load(filename);
    return library.IsInitialized() ? "it has no plug-in type"
                                   : "it can't be loaded (" + onOneLine(Library::GetLoadError()) + ")";
}

std::string Modules::GetPath(std::string const & filename) const
{
    fs::path const file = Plugin::GetPluginSystemFilename(filename);
    for (fs::path const & folder : m_folders) {
        std::error_code error;
        if (!file.has_parent_path() && fs::exists(folder / file, error)) {
            return (folder / file).string();
        }
    }
    return file.string();
}

std::string Modules::GetPortableName(std::string const & filename) const
{
    fs::path const file = filename;
    return IsFolder(file.parent_path()) ? file.filename().string() : filename;
}

std::vector<std::string> Modules::GetFiles() const
{
    std::vector<std::string> files;
    for (fs::path const & folder : m_folders) {
        std::list<std::string> names = findFiles((folder / Plugin::GetPluginFilter()).string());
        names.sort();
        for (std::string const & name : names) {
            files.push_back((folder / name).string());
        }
    }
    return files;
}

std::string Modules::GetDescription() const
{
    std::string text;
    for (fs::path const & folder : m_folders) {
        text += (text.empty() ? "" : ", ") + onOneLine(folder.string());
    }
    return text.empty() ? "no module folder" : text;
}

void Modules::print(std::ostream & stream) const
{
    for (std::string const & file : GetFiles()) {
        std::string const type = Plugin::GetPluginType(file);
        if (type.empty()) {
            std::cerr << "tesseralis: warning: the module '" << onOneLine(file) << "' is left out: " << GetProblem(file)
                      << ".\n";
            continue;
        }
        stream << onOneLine(type) << " '" << onOneLine(Plugin::GetPluginName(file)) << "' "
               << Plugin::GetPluginVersion(file).GetString() << ", for core "
               << Plugin::GetCoreVersion(file).GetString() << "\n  " << onOneLine(Plugin::GetPluginDescription(file))
               << "\n  " << onOneLine(file) << '\n';
    }
}

void Modules::check(std::string const & filename, std::string const & object) const
{
    if (filename.empty() || m_trust == Trust::Nothing) {
        return;
    }
    auto const warn = [&](std::string const & text) {
        std::cerr << "tesseralis: warning: the module '" << onOneLine(filename) << "' of '" << onOneLine(object) << "' "
                  << text << ".\n";
    };
    std::error_code error;
    if (!fs::exists(filename, error)) {
        warn("doesn't exist in " + GetDescription());
    } else if (!IsTrusted(filename)) {
        warn("is not loaded, since it isn't in a module folder (--trust allows it)");
    } else if (Plugin::GetPluginType(filename).empty()) {
        warn("can't be used: " + GetProblem(filename));
    } else if (Plugin::GetCoreVersion(filename) != Tesseralis::Get().GetVersion()) {
        warn("was built for core " + Plugin::GetCoreVersion(filename).GetString() + ", and this is core " +
             Tesseralis::Get().GetVersion().GetString());
    }
}
} // namespace tesseralis::host
