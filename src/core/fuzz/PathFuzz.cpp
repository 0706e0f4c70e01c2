// Paths split and join within the room that the buffers are said to need, and lose nothing on the way.

#include "object/Filename.h"
#include "object/Path.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

using namespace tesseralis;

namespace {
using Buffer = std::unique_ptr<char[]>;

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

Buffer bufferOf(std::string const & text)
{
    Buffer buffer(new char[text.size() + 1]);
    std::memcpy(buffer.get(), text.c_str(), text.size() + 1);
    return buffer;
}

std::string collapsed(std::string text, char separator)
{
    auto const isRun = [&](char a, char b) { return a == b && (a == separator || a == '.'); };
    text.erase(std::unique(text.begin(), text.end(), isRun), text.end());
    return text;
}

// The text up to the next zero byte.
std::string next(char const *& data, char const * end)
{
    char const * const begin = data;
    data = std::find(data, end, '\0');
    std::string const text(begin, data);
    data += data != end ? 1 : 0;
    return text;
}

std::string joined(PathParts const & parts, bool extended)
{
    std::size_t const length = parts.drive.size() + parts.directory.size() + parts.name.size() + parts.extension.size();
    Buffer const output(new char[length + 4]);
    Buffer const drive = bufferOf(parts.drive);
    Buffer const directory = bufferOf(parts.directory);
    Buffer const name = bufferOf(parts.name);
    Buffer const extension = bufferOf(parts.extension);
    makePath(output.get(), drive.get(), directory.get(), name.get(), extended ? extension.get() : nullptr);
    return output.get();
}

PathParts apart(std::string const & path)
{
    Buffer const input = bufferOf(path);
    Buffer parts[4];
    for (Buffer & part : parts) {
        part.reset(new char[path.size() + 1]);
    }
    splitPath(input.get(), parts[0].get(), parts[1].get(), parts[2].get(), parts[3].get());
    return {parts[0].get(), parts[1].get(), parts[2].get(), parts[3].get()};
}

void splitAndJoin(std::string const & path)
{
    PathParts const parts = apart(path);
    require(parts.drive + parts.directory + parts.name + parts.extension == path);
    require(parts.name != "" || parts.extension == "");

    char const separator = path.starts_with('/') ? '/' : '\\';
    bool const isDrive = !path.empty() && parts.drive == path;
    std::string expected = collapsed(path, separator);
    if (isDrive && !expected.ends_with(separator)) {
        expected += separator;
    }
    require(collapsed(joined(parts, true), separator) == expected);
}

void nameFile(std::string const & path)
{
    Filename const filename(path);
    require(filename.GetDriveDirectory() + filename.GetNameExtension() == filename.GetPath());

    // A path that is all drive, or has points to collapse, changes when it is joined again.
    bool const isStable =
        filename.GetDrive() != filename.GetPath() && filename.GetPath().find("..") == std::string::npos;
    require((isStable ? filename.GetSibling(filename.GetExtension()) : Filename(filename.GetPath())) == filename);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    char const * text = reinterpret_cast<char const *>(data);
    char const * const end = text + size;
    if (std::find(text, end, '\0') == end) {
        splitAndJoin(std::string(text, end));
        nameFile(std::string(text, end));
        return 0;
    }

    PathParts parts;
    for (std::string * part : {&parts.drive, &parts.directory, &parts.name, &parts.extension}) {
        *part = next(text, end);
    }
    require(joined(parts, true) == makePath(parts));
    joined(parts, false);
    return 0;
}
