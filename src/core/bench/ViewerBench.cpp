// What a viewer costs beside the GL that is done: a frame and the events of input with so many plug-ins, half of them
// modules that do nothing and half of them without one. There is no context, so that GL's calls return at once.

#include "math/Vector.h"
#include "plugin/Canvas.h"
#include "plugin/CompositorPlugin.h"
#include "plugin/InteractorPlugin.h"
#include "plugin/RendererPlugin.h"
#include "value/Variant.h"
#include "view/Viewer.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>

using namespace tesseralis;

namespace {
std::size_t s_allocations = 0;
} // namespace

[[gnu::noinline]] void * operator new(std::size_t size)
{
    ++s_allocations;
    if (void * const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void * memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void * memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace {
class Surface : public Canvas
{
public:
    void bind() override {}
    void release() override {}
};

class DirectCompositor : public CompositorPlugin
{
public:
    bool display(std::list<Displayable *> const & displayables, std::map<Displayable *, unsigned int> const &) override
    {
        Surface surface;
        for (Displayable * const displayable : displayables) {
            displayable->display(surface);
        }
        for (Displayable * const displayable : displayables) {
            displayable->overlay(surface);
        }
        return true;
    }
};

/// A compositor and so many renderers and interactors, all enabled.
class Scene : public Viewer
{
public:
    explicit Scene(std::int64_t count) : Viewer(0u)
    {
        addEnabled(new DirectCompositor);
        for (std::int64_t i = 0; i < count; ++i) {
            if (i % 2 == 0) {
                auto * const renderer = new RendererPlugin;
                renderer->SetFilename(BENCH_MODULE);
                addEnabled(renderer);
            } else {
                addEnabled(new InteractorPlugin);
            }
        }
        display();
    }
    ~Scene() override { destroyViewer(); }

private:
    void addEnabled(Plugin * plugin)
    {
        plugin->GetProperty("Enabled") = true;
        add(plugin);
    }
};

template <class Work>
void measure(benchmark::State & state, Work work)
{
    Scene scene(state.range(0));
    work(scene);
    std::size_t const before = s_allocations;
    for (auto _ : state) {
        work(scene);
    }
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(s_allocations - before), benchmark::Counter::kAvgIterations);
}

void displayFrame(benchmark::State & state)
{
    measure(state, [](Viewer & viewer) { viewer.display(); });
}

void offerCursor(benchmark::State & state)
{
    measure(state, [device = std::string("mouse0.cursor")](Viewer & viewer) {
        viewer.cursor(device, Vector(1, 2, 0), 0.0f, 0.0f);
    });
}

void offerButton(benchmark::State & state)
{
    measure(state, [device = std::string("mouse0.middlebutton")](Viewer & viewer) { viewer.button(device, true); });
}

// With a translator of its own for each plug-in.
void offerButtonTranslated(benchmark::State & state)
{
    measure(state, [device = std::string("mouse0.middlebutton"), isSet = false](Viewer & viewer) mutable {
        for (PluginContainerIterator i(viewer); !isSet && !i.IsAtEnd(); ++i) {
            viewer.SetTranslator(&*i, Translator());
        }
        isSet = true;
        viewer.button(device, true);
    });
}

void idleAll(benchmark::State & state)
{
    measure(state, [](Viewer & viewer) { viewer.idle(); });
}

// What a renderer that asks for a new picture costs.
void updateOne(benchmark::State & state)
{
    measure(state, [](Viewer & viewer) { viewer.update(&*ViewerRendererIterator(viewer), Viewer::c_fullUpdate); });
}
} // namespace

BENCHMARK(displayFrame)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(offerCursor)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(offerButton)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(offerButtonTranslated)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(idleAll)->Arg(100)->Unit(benchmark::kMicrosecond);
BENCHMARK(updateOne)->Arg(100)->Unit(benchmark::kMicrosecond);
