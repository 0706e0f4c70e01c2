// Part of every program that is built for ThreadSanitizer.
//
// The registry's lock comes before those of the objects in it, and a container's lock before those of its values; yet a
// value that changes tells its container under its own lock, and an object the registry. Plug-ins that hold one another
// in a ring have no order at all. All of them are for the one thread that owns the objects: worker threads never take
// the locks of the registry and of containers, so the orders can't meet.
//
// The software driver of OpenGL has threads of its own, which the detector doesn't see through.
extern "C" char const * __tsan_default_suppressions()
{
    return "deadlock:tesseralis::Tesseralis::\n"
           "deadlock:tesseralis::PropertyContainer::\n"
           "deadlock:tesseralis::PluginContainer::\n"
           "race:swrast_dri.so\n"
           "race:libEGL_mesa\n"
           "race:libLLVM\n";
}

// At the end of a program with threads the detector gives them a second to go wrong in. Here all but the driver's have
// been joined by then, and many tests run the host.
extern "C" char const * __tsan_default_options()
{
    return "atexit_sleep_ms=20";
}
