// A module's entry points, written by hand. Definitions spoil them: one that gives an entry point another name leaves
// it out, and these concern all of them.
#ifndef TYPE
#define TYPE "renderer"
#endif
#ifndef VISIBILITY
#define VISIBILITY "default"
#endif
#ifndef INSTEAD
#define INSTEAD // what to do before the answer would be given
#endif

#define ENTRY_POINT(declaration, value)                                                                                \
    extern "C" __attribute__((visibility(VISIBILITY))) declaration                                                     \
    {                                                                                                                  \
        INSTEAD;                                                                                                       \
        return value;                                                                                                  \
    }

namespace {
struct OwnType // which goes with the module
{
};
unsigned char const c_icon[] = {0, 0};
} // namespace

ENTRY_POINT(char const * GetPluginType(), TYPE)
ENTRY_POINT(char const * GetPluginName(), "Complete")
ENTRY_POINT(char const * GetPluginDescription(), "Tells everything.")
ENTRY_POINT(char const * GetPluginVersion(), "1.2.3-4 (20260701) debug")
ENTRY_POINT(char const * GetCoreVersion(), "0.7.0-5 (20250101)")
ENTRY_POINT(char const * GetPluginInformation(char const * topic, char const *), topic)
ENTRY_POINT(void const * GetPluginData(char const *), c_icon)
ENTRY_POINT(unsigned char const * GetPluginIcon(), c_icon)
ENTRY_POINT(void * createPluginInstance(void *), nullptr)
