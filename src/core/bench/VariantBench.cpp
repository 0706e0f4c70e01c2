// Setting, copying and converting single values, and 10 MB of JSON beside copying its bytes.

#include "object/Observer.h"
#include "value/Variant.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>

using namespace tesseralis;

namespace {
class Counter : public Observer
{
public:
    void modified(Observable const &, ObservableEvent const &) override { ++count; }
    long count = 0;
};

void setLimitedObservedInteger(benchmark::State & state)
{
    Variant variant(0, 0, 1000);
    Counter counter;
    variant.addObserver(&counter);
    int value = 0;
    for (auto _ : state) {
        variant = value;
        value = (value + 1) % 1000;
    }
}

void integerToTextAndBack(benchmark::State & state)
{
    Variant variant(123456);
    for (auto _ : state) {
        std::string const text = variant;
        variant = text;
        benchmark::DoNotOptimize(variant);
    }
}

void floatToTextAndBack(benchmark::State & state)
{
    Variant variant(1234.56f);
    for (auto _ : state) {
        std::string const text = variant;
        variant = text;
        benchmark::DoNotOptimize(variant);
    }
}

void copyScalar(benchmark::State & state)
{
    Variant const variant(5, 0, 10);
    for (auto _ : state) {
        Variant copy(variant);
        benchmark::DoNotOptimize(copy);
    }
}

/// Records of the kind that data files hold, of about the given size as text.
Variant const & GetRecords()
{
    static Variant const s_records = [] {
        Variant records = Variant::TypeArray();
        for (int i = 0; i < 100000; ++i) {
            Variant & record = records[i];
            record["id"] = i;
            record["name"] = "record " + std::to_string(i);
            record["visible"] = i % 3 == 0;
            for (int j = 0; j < 3; ++j) {
                record["position"][j] = static_cast<float>(i * j) * 0.37f;
            }
            record["note"] = "a text with \"quotes\"";
        }
        return records;
    }();
    return s_records;
}

void copyBytes(benchmark::State & state)
{
    std::string const text = GetRecords().GetJSON(true);
    std::string copy(text.size(), ' ');
    for (auto _ : state) {
        std::memcpy(copy.data(), text.data(), text.size());
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void writeJson(benchmark::State & state)
{
    std::size_t size = 0;
    for (auto _ : state) {
        size = GetRecords().GetJSON(state.range(0) == 0).size();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * size));
}

void readJson(benchmark::State & state)
{
    std::string const text = GetRecords().GetJSON(state.range(0) == 0);
    std::unique_ptr<Variant> value;
    for (auto _ : state) {
        value.reset(new Variant(Variant::fromJSON(text)));
        state.PauseTiming(); // destroying is measured by itself
        value.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void destroyRecords(benchmark::State & state)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto value = std::make_unique<Variant>(GetRecords());
        state.ResumeTiming();
        value.reset();
    }
}

BENCHMARK(setLimitedObservedInteger);
BENCHMARK(integerToTextAndBack);
BENCHMARK(floatToTextAndBack);
BENCHMARK(copyScalar);
BENCHMARK(copyBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(writeJson)->ArgName("typed")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(readJson)->ArgName("typed")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(destroyRecords)->Unit(benchmark::kMillisecond);
} // namespace
