// The module of PluginBench.

#include "plugin/PluginModule.h"
#include "plugin/RendererPlugin.h"

using namespace tesseralis;

namespace {
class Bench : public Renderer, public PluginInstance<RendererPlugin>
{
public:
    explicit Bench(Plugin & plugin) : PluginInstance(plugin) {}
    bool button(Controller const &) override { return true; }
};
} // namespace

TESSERALIS_PLUGIN_MODULE(Renderer, "Bench", "Does nothing.", "1.0.0-1 (20260701)", nullptr, Bench)
