// A module for RuntimeTest: it answers a call and tells when it goes.

namespace {
struct Farewell
{
    bool * gone = nullptr;
    ~Farewell()
    {
        if (gone != nullptr) {
            *gone = true;
        }
    }
} s_farewell;
} // namespace

extern "C" __attribute__((visibility("default"))) int answer()
{
    return 42;
}

extern "C" __attribute__((visibility("default"))) void tellWhenGone(bool * gone)
{
    s_farewell.gone = gone;
}
