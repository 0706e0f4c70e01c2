// A module's entry points, written by hand. Definitions spoil them:
//   WITHOUT              the number of the one that is left out, -1 for all
//   NULL_ANSWERS         all give null
//   THROWING_ANSWERS     all throw
//   TYPE                 the type, if it isn't to be that of a renderer

#ifndef TYPE
#define TYPE "renderer"
#endif
#ifndef WITHOUT
#define WITHOUT 0
#endif
#if defined(NULL_ANSWERS)
#define ANSWER(value) return nullptr
#elif defined(THROWING_ANSWERS)
#define ANSWER(value) throw OwnType()
#else
#define ANSWER(value) return value
#endif

#define ENTRY_POINT(declaration, value)                                                                                \
    extern "C" __attribute__((visibility("default"))) declaration                                                      \
    {                                                                                                                  \
        ANSWER(value);                                                                                                 \
    }

namespace {
struct OwnType // which goes with the module
{
};
[[maybe_unused]] unsigned char const c_icon[] = {0, 0};
} // namespace

#if WITHOUT >= 0
#if WITHOUT != 1
ENTRY_POINT(char const * GetPluginType(), TYPE)
#endif
#if WITHOUT != 2
ENTRY_POINT(char const * GetPluginName(), "Complete")
#endif
#if WITHOUT != 3
ENTRY_POINT(char const * GetPluginDescription(), "Tells everything.")
#endif
#if WITHOUT != 4
ENTRY_POINT(char const * GetPluginVersion(), "1.2.3-4 (20260701) debug")
#endif
#if WITHOUT != 5
ENTRY_POINT(char const * GetCoreVersion(), "0.7.0-5 (20250101)")
#endif
#if WITHOUT != 6
ENTRY_POINT(char const * GetPluginInformation([[maybe_unused]] char const * topic, char const *), topic)
#endif
#if WITHOUT != 7
ENTRY_POINT(void const * GetPluginData(char const *), c_icon)
#endif
#if WITHOUT != 8
ENTRY_POINT(unsigned char const * GetPluginIcon(), c_icon)
#endif
#if WITHOUT != 9
ENTRY_POINT(void * createPluginInstance(void *), nullptr)
#endif
#endif
