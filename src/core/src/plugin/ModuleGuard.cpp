#include "plugin/ModuleGuard.h"

#include "object/Guard.h"

namespace tesseralis {
namespace {
ModuleGuard::Test & GetTest()
{
    static auto * const s_test = new ModuleGuard::Test;
    return *s_test;
}
} // namespace

void ModuleGuard::SetTest(Test const & test)
{
    GetTest() = test;
}

bool ModuleGuard::IsAllowed(std::string const & filename)
{
    Test const test = GetTest(); // a copy, since it may set another one
    bool allowed = test == nullptr;
    if (!allowed) {
        detail::runGuarded([&] { allowed = test(filename); });
    }
    return allowed;
}

Library ModuleGuard::load(std::string const & filename)
{
    return !filename.empty() && IsAllowed(filename) ? Library(filename) : Library();
}
} // namespace tesseralis
