// What the guard round a module costs: a call through a plug-in beside the same virtual call on the module's instance,
// and loading, using and unloading a module beside dlopen() alone.

#include "plugin/RendererPlugin.h"
#include "view/Controller.h"

#include <benchmark/benchmark.h>

#include <dlfcn.h>

using namespace tesseralis;

namespace {
class OpenPlugin : public RendererPlugin
{
public:
    OpenPlugin() : RendererPlugin(0u) { SetFilename(BENCH_MODULE); }
    ~OpenPlugin() override { destroyRendererPlugin(); }

    using RendererPlugin::GetInstance;
};

// Called through the interface, as a viewer does; the compiler must not see through it.
void callButton(benchmark::State & state, Renderer * renderer)
{
    Controller const controller;
    for (auto _ : state) {
        benchmark::DoNotOptimize(renderer);
        benchmark::DoNotOptimize(renderer->button(controller));
    }
}

void callModule(benchmark::State & state)
{
    OpenPlugin plugin;
    plugin.initialize();
    callButton(state, plugin.GetInstance());
}

void callPlugin(benchmark::State & state)
{
    OpenPlugin plugin;
    plugin.initialize();
    callButton(state, &plugin);
}

void callPluginWithoutInstance(benchmark::State & state)
{
    OpenPlugin plugin;
    callButton(state, &plugin);
}

void loadByLoader(benchmark::State & state)
{
    for (auto _ : state) {
        void * const module = dlopen(BENCH_MODULE, RTLD_NOW | RTLD_LOCAL);
        benchmark::DoNotOptimize(dlsym(module, "createPluginInstance"));
        dlclose(module);
    }
}

void loadByPlugin(benchmark::State & state)
{
    OpenPlugin plugin;
    Controller const controller;
    for (auto _ : state) {
        plugin.initialize();
        benchmark::DoNotOptimize(plugin.button(controller));
        plugin.uninitialize();
    }
}

void readName(benchmark::State & state)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(Plugin::GetPluginName(BENCH_MODULE));
    }
}
} // namespace

BENCHMARK(callModule);
BENCHMARK(callPlugin);
BENCHMARK(callPluginWithoutInstance);
BENCHMARK(loadByLoader)->Unit(benchmark::kMicrosecond);
BENCHMARK(loadByPlugin)->Unit(benchmark::kMicrosecond);
BENCHMARK(readName)->Unit(benchmark::kMicrosecond);
