#include "object/platform/Module.h"

#include "object/platform/Files.h"

#include <dlfcn.h>
#include <link.h>

namespace tesseralis::detail {
namespace {
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

    // An empty name would stand for the program itself.
    return !file.empty() ? dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL) : nullptr;
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
