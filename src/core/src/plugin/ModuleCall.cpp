#include "plugin/ModuleCall.h"

#include "object/Guard.h"

#include <utility>

namespace tesseralis::detail {
constinit thread_local ModuleCall * ModuleCall::s_innermost = nullptr;

ModuleCall::Remains::Remains(Library && givenLibrary, std::function<void()> const & givenDeletion)
    : library(std::move(givenLibrary)), deleteInstance(givenDeletion)
{
}

ModuleCall::Remains::~Remains()
{
    endInstance();
}

void ModuleCall::Remains::endInstance()
{
    if (std::function<void()> const deletion = std::exchange(deleteInstance, nullptr)) {
        runGuarded(deletion);
    }
}

void ModuleCall::release(Plugin const & plugin, Library library, std::function<void()> const & deleteInstance)
{
    ModuleCall * outermost = nullptr;
    for (ModuleCall * call = s_innermost; call != nullptr; call = call->m_outer) {
        outermost = call->m_plugin == &plugin ? call : outermost;
    }
    if (outermost != nullptr) {
        outermost->m_remains.emplace_front(std::move(library), deleteInstance);
    } else {
        Remains(std::move(library), deleteInstance);
    }
}

void ModuleCall::forget(Plugin const & plugin)
{
    for (ModuleCall * call = s_innermost; call != nullptr; call = call->m_outer) {
        if (call->m_plugin == &plugin) {
            call->m_plugin = nullptr;
            for (Remains & remains : call->m_remains) {
                remains.endInstance();
            }
        }
    }
}
} // namespace tesseralis::detail
