// Part of every program that is built for AddressSanitizer. The software driver of OpenGL doesn't free all of its
// memory.
extern "C" char const * __lsan_default_suppressions()
{
    return "leak:swrast_dri.so\n";
}
