// Part of every program that is built for ThreadSanitizer.
//
// The registry's lock comes before those of the objects in it, and a container's lock before those of its values; yet a
// value that changes tells its container under its own lock, and an object the registry. All of them are for the one
// thread that owns the objects: worker threads never take the locks of the registry and of containers, so the two
// orders can't meet.
extern "C" char const * __tsan_default_suppressions()
{
    return "deadlock:tesseralis::Tesseralis::\n"
           "deadlock:tesseralis::PropertyContainer::\n";
}
