// Part of every program that is built for ThreadSanitizer.
//
// The registry's lock comes before those of the objects in it; yet an object that changes tells the registry of it under
// its own lock. Both are for the one thread that owns the objects: worker threads never take the registry's lock, so the
// two orders can't meet.
extern "C" char const * __tsan_default_suppressions()
{
    return "deadlock:tesseralis::Tesseralis::\n";
}
