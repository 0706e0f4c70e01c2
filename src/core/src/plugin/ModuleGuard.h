#pragma once

#include "object/Library.h"

#include <functional>
#include <string>

namespace tesseralis {
/// Stands before every loading of a module file, be it to initialise a plug-in or to read what a module tells about
/// itself: loading runs the code in the file, and the file's name may come from a document that isn't to be trusted. A
/// host sets a test for the whole process; a module that it refuses behaves like one that can't be loaded.
class TESSERALIS_API ModuleGuard
{
public:
    /// Whether a file may be loaded. The name is in the form of this system and goes to the loader as it is: symbolic
    /// links aren't resolved, a relative path is one from the current directory, and a bare name, without any
    /// separator, is looked for where the system keeps its libraries.
    using Test = std::function<bool(std::string const & filename)>;

    /// Asks this test from now on; an empty one, as at the start, allows every file. A test that throws is logged and
    /// refuses. It must not ask for a module itself.
    static void SetTest(Test const & test);
    static bool IsAllowed(std::string const & filename);

    /// The loaded module; not initialised if the file is refused or can't be loaded.
    static Library load(std::string const & filename);
};
} // namespace tesseralis
