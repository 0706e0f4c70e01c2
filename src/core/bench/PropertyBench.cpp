// A change of a property, from the value to the registry's event, and along links.

#include "object/Tesseralis.h"
#include "value/PropertyContainer.h"
#include "value/Variant.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

using namespace tesseralis;

namespace {
void setRegisteredProperty(benchmark::State & state)
{
    PropertyContainer container("container", ObjectAttribute::Registered);
    container.addProperty("number", Variant::TypeInteger(0, 0, 1000));
    Variant & number = container.GetProperty("number");
    int i = 0;
    for (auto _ : state) {
        number = i = (i + 1) % 1000;
    }
}

void changeAlongLinks(benchmark::State & state)
{
    std::vector<std::unique_ptr<PropertyContainer>> containers;
    for (int i = 0; i <= state.range(0); ++i) {
        containers.push_back(std::make_unique<PropertyContainer>("container", ObjectAttribute::Registered));
        containers.back()->addProperty("number", 0);
        if (i > 0) {
            containers.back()->SetPropertyLink(
                "number", PropertyContainerLink(containers[containers.size() - 2].get(), "number"));
        }
    }
    Variant & number = containers.front()->GetProperty("number");
    int i = 0;
    for (auto _ : state) {
        number = i = (i + 1) % 1000;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addAndRemoveProperties(benchmark::State & state)
{
    for (auto _ : state) {
        PropertyContainer container("container", ObjectAttribute::Registered);
        for (int i = 0; i < state.range(0); ++i) {
            container.addProperty(std::to_string(i), i);
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
} // namespace

BENCHMARK(setRegisteredProperty);
BENCHMARK(changeAlongLinks)->Arg(1)->Arg(10)->Arg(100);
BENCHMARK(addAndRemoveProperties)->Arg(10)->Arg(1000)->Arg(100000);
