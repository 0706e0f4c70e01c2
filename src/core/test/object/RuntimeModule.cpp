// A module for RuntimeTest that tells when it goes.

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

extern "C" __attribute__((visibility("default"))) void tellWhenGone(bool * gone)
{
    s_farewell.gone = gone;
}
