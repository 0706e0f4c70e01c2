#include "object/platform/Module.h"

#include "object/platform/Files.h"

#include <algorithm>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tesseralis::detail {
namespace {
/// Whether a file reaches as far as its own segments say. The system maps what a file cut short doesn't have, and the
/// first look at it ends the process.
bool reachesItsSegments(int file)
{
    struct stat status;
    ElfW(Ehdr) header;
    if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode) ||
        pread(file, &header, sizeof(header), 0) != sizeof(header) || header.e_phentsize != sizeof(ElfW(Phdr))) {
        return false;
    }

    std::vector<ElfW(Phdr)> segments(header.e_phnum);
    auto const byteCount = static_cast<ssize_t>(segments.size() * sizeof(ElfW(Phdr)));
    if (pread(file, segments.data(), static_cast<std::size_t>(byteCount), static_cast<off_t>(header.e_phoff)) !=
        byteCount) {
        return false;
    }
    auto const size = static_cast<ElfW(Off)>(status.st_size);
    return std::all_of(segments.begin(), segments.end(), [&](ElfW(Phdr) const & segment) {
        return segment.p_type != PT_LOAD || (segment.p_offset <= size && segment.p_filesz <= size - segment.p_offset);
    });
}

/// False for a file that is there and isn't whole. One that isn't there may be loaded still.
bool mayBeLoaded(std::string const & path)
{
    int const file = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); // doesn't wait for the writer of a pipe
    if (file < 0) {
        return true;
    }
    bool const isWhole = reachesItsSegments(file);
    close(file);
    return isWhole;
}

link_map * linkMapOf(void * module)
{
    link_map * map = nullptr;
    dlinfo(module, RTLD_DI_LINKMAP, &map);
    return map;
}
} // namespace

void * loadModule(std::string const & path)
{
    // The path as given here is what modulePath() gives, so it must not depend on the current directory.
    bool const isBare = path.find('/') == std::string::npos;
    std::string const file = isBare ? path : absolutePath(path);

    dlerror(); // what it holds is from an earlier call

    // An empty name would stand for the program itself.
    bool const isLoadable = !file.empty() && (isBare || mayBeLoaded(file));
    return isLoadable ? dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL) : nullptr;
}

std::string loadError()
{
    char const * const error = dlerror();
    return error != nullptr ? error : "it is not a whole shared object";
}

void unloadModule(void * module)
{
    dlclose(module);
}

void * findSymbol(void * module, std::string const & name)
{
    void * const symbol = dlsym(module, name.c_str());
    Dl_info info;
    void * owner = nullptr;
    if (symbol == nullptr || dladdr1(symbol, &info, &owner, RTLD_DL_LINKMAP) == 0 || owner != linkMapOf(module)) {
        return nullptr;
    }
    return symbol;
}

std::string modulePath(void * module)
{
    link_map const * const map = linkMapOf(module);
    return map != nullptr ? absolutePath(map->l_name) : std::string();
}
} // namespace tesseralis::detail
