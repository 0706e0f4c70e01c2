// What it costs to register, look up, rename and remove one object among 1,000 to 100,000.

#include "object/Tesseralis.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

using namespace tesseralis;

namespace {
using Objects = std::vector<std::unique_ptr<Object>>;

Objects makeObjects(benchmark::State const & state, bool sameName)
{
    Objects objects;
    for (int i = 0; i < state.range(0); ++i) {
        objects.push_back(
            std::make_unique<Object>(sameName ? "thing" : "thing " + std::to_string(i), ObjectAttribute::Registered));
    }
    return objects;
}

void registerAndRemove(benchmark::State & state)
{
    for (auto _ : state) {
        makeObjects(state, false);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void registerUnderOneName(benchmark::State & state)
{
    for (auto _ : state) {
        makeObjects(state, true);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void lookUpByName(benchmark::State & state)
{
    Objects const objects = makeObjects(state, false);
    std::vector<std::string> names;
    for (auto const & object : objects) {
        names.push_back(object->GetObjectName());
    }
    for (auto _ : state) {
        for (std::string const & name : names) {
            benchmark::DoNotOptimize(Tesseralis::Get().GetObject(name));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void lookUpByPointer(benchmark::State & state)
{
    Objects const objects = makeObjects(state, false);
    for (auto _ : state) {
        for (auto const & object : objects) {
            benchmark::DoNotOptimize(Tesseralis::Get().GetObjectName(object.get()));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void renameEach(benchmark::State & state)
{
    Objects const objects = makeObjects(state, false);
    int round = 0;
    for (auto _ : state) {
        ++round;
        for (int i = 0; i < state.range(0); ++i) {
            objects[static_cast<std::size_t>(i)]->SetObjectName(std::to_string(i) + " in round " +
                                                                std::to_string(round));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
} // namespace

#define SIZES ->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)
BENCHMARK(registerAndRemove) SIZES;
BENCHMARK(registerUnderOneName) SIZES;
BENCHMARK(lookUpByName) SIZES;
BENCHMARK(lookUpByPointer) SIZES;
BENCHMARK(renameEach) SIZES;
