// The hot path of handles: reads on root and on a named deviant, a first
// write in a named deviant, casts; with the sizes of an object and a state,
// and the number of allocations per operation.

#include "kernel/TAV/NSImplementation/AssociationImpl.h"
#include "kernel/TAV/NSImplementation/NSDeviant/PropertyDeviantImpl.h"
#include "kernel/TAV/NSImplementation/PropertyImpl.h"

#include <tav/TAV/Association_h.h>
#include <tav/TAV/MultiplicityElement_h.h>
#include <tav/TAV/Property_h.h>
#include "kernel/deviant/DeviantImpl.h"
#include <tav/kernel/deviant/DeviantManager.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>

namespace {

// Every allocation of the process passes here, the library's included.
long gAllocations = 0;

// Out of line, so that the compiler does not pair our new with the free inside.
[[gnu::noinline]] void release(void* p) noexcept
{
    std::free(p);
}

} // namespace

void* operator new(std::size_t size)
{
    ++gAllocations;
    if (void* p = std::malloc(size ? size : 1))
        return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept
{
    release(p);
}
void operator delete(void* p, std::size_t) noexcept
{
    release(p);
}

namespace {

using namespace TAV;

struct World {
    DeviantManager manager;
    Deviant root = manager.getRoot();
    Deviant named = manager.createDeviantWithName("named");
    Property a = make();
    Property b = make();

    World()
    {
        root.impl()->transactionDepth = 1;
        named.impl()->transactionDepth = 1;
        a.setLower(2);
        b.setLower(3);
        // Named deviants without history: no old states saved.
        named.impl()->maximumUndoLength = 0;
        root.impl()->maximumUndoLength = 0;
    }

    Property make()
    {
        auto* object = new NSImplementation::PropertyImpl();
        object->rootDeviant = root;
        object->internal_createDeviation(root);
        return Property(object, root);
    }
};

void countAllocations(benchmark::State& state, long before)
{
    state.counters["allocs/op"] =
        benchmark::Counter(static_cast<double>(gAllocations - before) / static_cast<double>(state.iterations()));
}

void BM_ReadOnRoot(benchmark::State& state)
{
    World w;
    long before = gAllocations;
    for (auto _ : state)
        benchmark::DoNotOptimize(w.a.getLower());
    countAllocations(state, before);
    state.counters["bytes/object"] = sizeof(NSImplementation::PropertyImpl);
    state.counters["bytes/state"] = sizeof(NSImplementation::PropertyDeviantImpl);
    state.counters["bytes/handle"] = sizeof(Property);
}
BENCHMARK(BM_ReadOnRoot);

void BM_ReadOnNamedCacheHit(benchmark::State& state)
{
    World w;
    Property a(w.a.internal_intf(), w.named);
    a.setLower(5); // a state of its own in the named deviant
    long before = gAllocations;
    for (auto _ : state)
        benchmark::DoNotOptimize(a.getLower());
    countAllocations(state, before);
}
BENCHMARK(BM_ReadOnNamedCacheHit);

void BM_ReadOnNamedCacheMiss(benchmark::State& state)
{
    World w;
    Property a(w.a.internal_intf(), w.named);
    Property b(w.b.internal_intf(), w.named);
    a.setLower(5);
    b.setLower(6);
    long before = gAllocations;
    // Alternating objects defeat the one-entry cache: every read hashes.
    for (auto _ : state) {
        benchmark::DoNotOptimize(a.getLower());
        benchmark::DoNotOptimize(b.getLower());
    }
    countAllocations(state, before);
    state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(BM_ReadOnNamedCacheMiss);

void BM_ReadOnNamedThroughToRoot(benchmark::State& state)
{
    World w;
    Property a(w.a.internal_intf(), w.named);
    long before = gAllocations;
    for (auto _ : state)
        benchmark::DoNotOptimize(a.getLower());
    countAllocations(state, before);
}
BENCHMARK(BM_ReadOnNamedThroughToRoot);

void BM_FirstWriteOnNamed(benchmark::State& state)
{
    World w;
    Property a(w.a.internal_intf(), w.named);
    auto* object = static_cast<NSImplementation::PropertyImpl*>(w.a.internal_intf());
    int value = 10;
    for (auto _ : state) {
        a.setLower(++value); // copies root's state into the deviant
        object->internal_setDeviation(w.named, nullptr); // and drops it again
    }
    state.SetLabel("write with copy, then drop the copy");
}
BENCHMARK(BM_FirstWriteOnNamed);

void BM_WriteOnRoot(benchmark::State& state)
{
    World w;
    int value = 10;
    long before = gAllocations;
    for (auto _ : state)
        w.a.setLower(++value);
    countAllocations(state, before);
}
BENCHMARK(BM_WriteOnRoot);

void BM_CastToSecondBase(benchmark::State& state)
{
    World w;
    long before = gAllocations;
    for (auto _ : state) {
        ImmutableMultiplicityElement me = w.a;
        benchmark::DoNotOptimize(me.internal_intf());
    }
    countAllocations(state, before);
}
BENCHMARK(BM_CastToSecondBase);

void BM_FailedDowncast(benchmark::State& state)
{
    World w;
    long before = gAllocations;
    for (auto _ : state) {
        ImmutableAssociation none(w.a);
        benchmark::DoNotOptimize(none.internal_intf());
    }
    countAllocations(state, before);
}
BENCHMARK(BM_FailedDowncast);

void BM_HandleCopy(benchmark::State& state)
{
    World w;
    long before = gAllocations;
    for (auto _ : state) {
        Property copy = w.a;
        benchmark::DoNotOptimize(copy.internal_intf());
    }
    countAllocations(state, before);
}
BENCHMARK(BM_HandleCopy);

} // namespace

BENCHMARK_MAIN();
