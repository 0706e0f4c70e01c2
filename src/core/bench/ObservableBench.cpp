// Brackets with 1 to 100,000 observers, beside the plain virtual calls that a delivery cannot do without.

#include "object/Observable.h"
#include "object/Observer.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace tesseralis;

namespace {
class Counter : public Observer
{
public:
    using Observer::modified;
    void modified(Observable const &, ObservableEvent const &) override { ++count; }
    long count = 0;
};

void callsAlone(benchmark::State & state)
{
    std::vector<std::unique_ptr<Counter>> observers;
    for (int i = 0; i < state.range(0); ++i) {
        observers.push_back(std::make_unique<Counter>());
    }
    Observable const observable;
    ObservableEvent const event;
    for (auto _ : state) {
        for (auto const & observer : observers) {
            observer->modified(observable, event);
            benchmark::ClobberMemory();
        }
    }
}

void bracket(benchmark::State & state)
{
    std::vector<std::unique_ptr<Counter>> observers;
    Observable observable;
    for (int i = 0; i < state.range(0); ++i) {
        observers.push_back(std::make_unique<Counter>());
        observable.addObserver(observers.back().get());
    }
    for (auto _ : state) {
        observable.beginModification();
        observable.endModification();
    }
    state.SetComplexityN(state.range(0));
}

void attachAndDetach(benchmark::State & state)
{
    std::vector<std::unique_ptr<Counter>> observers;
    for (int i = 0; i < state.range(0); ++i) {
        observers.push_back(std::make_unique<Counter>());
    }
    Observable observable;
    for (auto _ : state) {
        for (auto const & observer : observers) {
            observable.addObserver(observer.get());
        }
        for (auto const & observer : observers) {
            observable.removeObserver(observer.get());
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
} // namespace

BENCHMARK(callsAlone)->Arg(1)->Arg(100);
BENCHMARK(bracket)->Arg(1)->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000)->Complexity();
BENCHMARK(attachAndDetach)->Arg(1)->Arg(100)->Arg(100000);
