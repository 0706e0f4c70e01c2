#include "object/Path.h"

#include "object/platform/Files.h"

#include <optional>
#include <string_view>

namespace tesseralis {
namespace {
struct PathViews
{
    std::string_view drive;
    std::string_view directory;
    std::string_view name;
    std::string_view extension;
};

PathViews split(std::string_view path)
{
    PathViews parts;
    bool const slashed = path.starts_with('/');
    char const separator = slashed ? '/' : '\\';

    // The drive ends at the first separator; one at the very beginning belongs to it.
    std::size_t position = path.find(separator, slashed ? 1 : 0);
    if (position == std::string_view::npos) {
        if (slashed) {
            parts.drive = path;
            return parts;
        }
        position = 0;
    }
    parts.drive = path.substr(0, position);

    // A separator right behind the drive makes no directory of its own: it stays with the name.
    std::size_t const last = path.rfind(separator);
    if (last != std::string_view::npos && last > position) {
        parts.directory = path.substr(position, last + 1 - position);
        position = last + 1;
    }

    // A leading point belongs to the name.
    std::string_view const rest = path.substr(position);
    std::size_t const point = rest.rfind('.');
    bool const extended = point != std::string_view::npos && point > 0;
    parts.name = rest.substr(0, extended ? point : rest.size());
    parts.extension = rest.substr(parts.name.size());
    return parts;
}

void appendCollapsed(std::string & output, std::string_view text, char collapsed)
{
    for (char const character : text) {
        if (character != collapsed || !output.ends_with(collapsed)) {
            output += character;
        }
    }
}

void appendMissing(std::string & output, char character)
{
    if (!output.ends_with(character)) {
        output += character;
    }
}

std::string join(std::string_view drive, std::string_view directory, std::string_view name,
                 std::optional<std::string_view> extension)
{
    char const separator = drive.starts_with('/') ? '/' : '\\';
    std::string output;
    output.reserve(drive.size() + directory.size() + name.size() + (extension ? extension->size() : 0) + 3);

    if (!drive.empty()) {
        appendCollapsed(output, drive, separator);
        appendMissing(output, separator);
    }
    if (!directory.empty()) {
        appendMissing(output, separator);
        appendCollapsed(output, directory, separator);
        appendMissing(output, separator);
    }
    appendCollapsed(output, name, '.');

    if (!extension) {
        while (output.size() > 1 && output.ends_with('.')) {
            output.pop_back();
        }
    } else if (!extension->empty()) {
        appendMissing(output, '.');
        appendCollapsed(output, *extension, '.');
    }
    return output;
}

void copyOut(std::string_view text, char * buffer)
{
    if (buffer != nullptr) {
        buffer[text.copy(buffer, text.size())] = '\0';
    }
}

std::string_view viewOf(char const * text)
{
    return text != nullptr ? std::string_view(text) : std::string_view();
}

bool matches(std::string_view pattern, std::string_view name)
{
    std::size_t star = std::string_view::npos; // the last one seen, and how far the name went into it
    std::size_t taken = 0;
    std::size_t i = 0;
    for (std::size_t position = 0; position < name.size();) {
        if (i < pattern.size() && pattern[i] == '*') {
            star = i++;
            taken = position;
        } else if (i < pattern.size() && (pattern[i] == '?' || pattern[i] == name[position])) {
            ++i;
            ++position;
        } else if (star != std::string_view::npos) {
            i = star + 1;
            position = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', i) == std::string_view::npos;
}
} // namespace

PathParts splitPath(std::string const & path)
{
    PathViews const parts = split(path);
    return {std::string(parts.drive), std::string(parts.directory), std::string(parts.name),
            std::string(parts.extension)};
}

void splitPath(char const * path, char * drive, char * directory, char * name, char * extension)
{
    PathViews const parts = split(viewOf(path));
    copyOut(parts.drive, drive);
    copyOut(parts.directory, directory);
    copyOut(parts.name, name);
    copyOut(parts.extension, extension);
}

std::string makePath(PathParts const & parts)
{
    return join(parts.drive, parts.directory, parts.name, parts.extension);
}

void makePath(char * path, char const * drive, char const * directory, char const * name, char const * extension)
{
    std::optional<std::string_view> const given =
        extension != nullptr ? std::optional(viewOf(extension)) : std::nullopt;
    copyOut(join(viewOf(drive), viewOf(directory), viewOf(name), given), path);
}

std::list<std::string> findFiles(std::string const & pattern)
{
    std::size_t const nameStart = pattern.rfind('/') + 1; // 0 where there is none
    std::string_view const namePattern = std::string_view(pattern).substr(nameStart);

    std::list<std::string> names = detail::directoryEntries(nameStart > 0 ? pattern.substr(0, nameStart) : ".");
    names.remove_if([&](std::string const & name) { return !matches(namePattern, name); });
    return names;
}
} // namespace tesseralis
