#pragma once

#include "object/Library.h"

#include <forward_list>
#include <functional>

namespace tesseralis {
class Plugin;
} // namespace tesseralis

namespace tesseralis::detail {
/// Stands for a call into a plug-in's module, on the stack as long as that runs. A module may lead to its own plug-in
/// being uninitialised or deleted meanwhile: the code that it returns to stays until the outermost call through the
/// plug-in has ended, and the instance does unless the plug-in goes.
class TESSERALIS_API ModuleCall
{
public:
    explicit ModuleCall(Plugin const & plugin) : m_plugin(&plugin), m_outer(s_innermost) { s_innermost = this; }
    ModuleCall(ModuleCall const &) = delete;
    ModuleCall & operator=(ModuleCall const &) = delete;
    ~ModuleCall() { s_innermost = m_outer; }

    /// Whether the plug-in is still there.
    bool HasPlugin() const { return m_plugin != nullptr; }

    /// Ends what a plug-in had of its module: deletes the instance, then releases the module. Where a call through the
    /// plug-in runs on this thread that waits for its end.
    static void release(Plugin const & plugin, Library library, std::function<void()> const & deleteInstance);
    /// A plug-in is about to go: what still waits loses its instance at once, and only the module stays.
    static void forget(Plugin const & plugin);

private:
    struct Remains
    {
        Remains(Library && givenLibrary, std::function<void()> const & givenDeletion);
        Remains(Remains const &) = delete;
        Remains & operator=(Remains const &) = delete;
        ~Remains();
        void endInstance();

        Library library;
        std::function<void()> deleteInstance;
    };

    // No look-up of the thread's data at each call.
    [[gnu::tls_model("initial-exec")]] static constinit thread_local ModuleCall * s_innermost;

    Plugin const * m_plugin;
    ModuleCall * m_outer;
    std::forward_list<Remains> m_remains;
};
} // namespace tesseralis::detail
