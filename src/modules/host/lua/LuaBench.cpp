// What the value of a small expression costs through the plug-in of the Lua host.

#include "plugin/HostPlugin.h"
#include "plugin/Session.h"
#include "value/Variant.h"

#include <benchmark/benchmark.h>

using namespace tesseralis;

namespace {
void evaluate(benchmark::State & state, char const * text)
{
    HostPlugin host("lua", 0u);
    host.SetFilename(LUA_MODULE);
    host.initialize();
    Session session("s", ObjectAttribute::Registered);
    session.addProperty("a", 2);
    session.addProperty("b", 3.5f);
    if (host.evaluate(text, &session) != Variant(5.5f)) {
        state.SkipWithError("The value is wrong.");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(host.evaluate(text, &session));
    }
}
} // namespace

BENCHMARK_CAPTURE(evaluate, constant, "5.5");
BENCHMARK_CAPTURE(evaluate, self, "self.a + self.b");
BENCHMARK_CAPTURE(evaluate, objects, "objects.s.a + objects.s.b");
