#pragma once

#include <string>

namespace tesseralis::detail {
/// Loads a shared object and gives its handle; null if that fails, also for a file that is cut short. A path that has a
/// separator is taken from the current directory, a bare name is looked for where the system keeps its libraries. Each
/// load needs its unloadModule().
void * loadModule(std::string const & path);
void unloadModule(void * module);
/// Why the last loadModule() of this thread failed; to be asked once, before anything else is done here.
std::string loadError();

/// Null if the module itself lacks the symbol, even if a library that it needs has it.
void * findSymbol(void * module, std::string const & name);

/// The absolute path from which the module was loaded.
std::string modulePath(void * module);
} // namespace tesseralis::detail
