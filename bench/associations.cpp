// Multi-valued properties through their generated getters: adding n elements to
// a many-to-many association (both ends kept), for n from 1,000 to 100,000, and
// a typed read of a list in a loop. The bytes of the storage are reported with them.

#include "kernel/TAV/NSImplementation/ClassImpl.h"
#include "kernel/TAV/NSImplementation/NSDeviant/PropertyDeviantImpl.h"
#include "kernel/TAV/NSImplementation/PropertyImpl.h"

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/deviant/DeviantManager.h>

#include <benchmark/benchmark.h>

#include <vector>

namespace {

using namespace TAV;

template <class Impl>
Impl* make(Deviant aRoot)
{
    auto* object = new Impl();
    object->rootDeviant = aRoot;
    object->internal_createDeviation(aRoot);
    return object;
}

struct World {
    DeviantManager manager;
    Deviant root = manager.getRoot();
    World() { root.setMaximumUndoStackLength(0); }
};

void sizes(benchmark::State& state)
{
    state.counters["bytes/list"] = sizeof(MultiIndexImpl<Property, true>);
    state.counters["bytes/PropertyState"] = sizeof(NSImplementation::PropertyDeviantImpl);
}

// Each element gains the owner in its own list as well: 2n insertions in all.
void BM_ManyToManyAdd(benchmark::State& state)
{
    World world;
    Deviant const root = world.root;
    int const n = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        Property owner(make<NSImplementation::PropertyImpl>(root), root);
        std::vector<Property> elements;
        elements.reserve(static_cast<std::size_t>(n));
        for (int i = 0; i < n; ++i)
            elements.emplace_back(make<NSImplementation::PropertyImpl>(root), root);
        state.ResumeTiming();

        root.beginTransaction("add");
        Sequence<Property> const redefined = owner.getRedefinedProperties();
        for (Property const& e : elements)
            redefined.push_back(e);
        root.commitTransaction();

        state.PauseTiming();
        benchmark::DoNotOptimize(owner.getRedefinedProperties().size());
        root.beginTransaction("clear"); // the two ends hold counts on each other
        owner.getRedefinedProperties().clear();
        root.commitTransaction();
        state.ResumeTiming();
    }
    state.SetComplexityN(n);
    state.SetItemsProcessed(state.iterations() * n);
    sizes(state);
}
BENCHMARK(BM_ManyToManyAdd)->RangeMultiplier(10)->Range(1'000, 100'000)->Arg(30'000)->Complexity(benchmark::oNLogN)
    ->Unit(benchmark::kMillisecond);

// A typed read of every element of a 100-element list: at(i) through one sequence,
// and the getter called anew for each read, as code that doesn't keep it does.
void BM_TypedListRead(benchmark::State& state)
{
    World world;
    Deviant const root = world.root;
    Class owner(make<NSImplementation::ClassImpl>(root), root);
    std::vector<Property> elements;
    root.beginTransaction("fill");
    for (int i = 0; i < 100; ++i)
        owner.getOwnedAttributes().push_back(elements.emplace_back(make<NSImplementation::PropertyImpl>(root), root));
    root.commitTransaction();
    bool const anew = state.range(0) != 0;
    Sequence<Property> const kept = owner.getOwnedAttributes();
    for (auto _ : state) {
        for (int i = 0; i < 100; ++i)
            benchmark::DoNotOptimize(anew ? owner.getOwnedAttributes().at(i) : kept.at(i));
    }
    state.SetItemsProcessed(state.iterations() * 100);
    state.SetLabel(anew ? "getter per read" : "one sequence");
    root.beginTransaction("clear");
    owner.getOwnedAttributes().clear();
    root.commitTransaction();
}
BENCHMARK(BM_TypedListRead)->Arg(0)->Arg(1);

// The same list walked by iterator.
void BM_TypedListIterate(benchmark::State& state)
{
    World world;
    Deviant const root = world.root;
    Class owner(make<NSImplementation::ClassImpl>(root), root);
    root.beginTransaction("fill");
    for (int i = 0; i < 100; ++i)
        owner.getOwnedAttributes().push_back(Property(make<NSImplementation::PropertyImpl>(root), root));
    root.commitTransaction();
    for (auto _ : state)
        for (Property const& p : owner.getOwnedAttributesWithoutAssociation())
            benchmark::DoNotOptimize(p);
    state.SetItemsProcessed(state.iterations() * 100);
    root.beginTransaction("clear");
    owner.getOwnedAttributes().clear();
    root.commitTransaction();
}
BENCHMARK(BM_TypedListIterate);

} // namespace

BENCHMARK_MAIN();
