// State lookup on the hot path: root reads must not touch a map, named
// deviants pay one hash lookup (none on a cache hit), reads never allocate.

#include "bench/AllocationCounter.h"
#include "kernel/deviant/DeviantImpl.h"
#include "tests/deviant/Counter.h"

#include <tav/kernel/deviant/DeviantManager.h>

#include <benchmark/benchmark.h>

namespace {

using tavtest::Counter;
using TAV::Deviant;

struct World {
    TAV::DeviantManager manager;
    Deviant root = manager.getRoot();
    Deviant alpha = manager.createDeviantWithName("alpha");
    tavtest::Counters held;
    Counter& a = held.make(root, 1);
    Counter& b = held.make(root, 2);
    // Reads go through the interface, as a handle's do: no devirtualising.
    Counting::NSInterface::CounterIntf* volatile viaA = &a;
    Counting::NSInterface::CounterIntf* volatile viaB = &b;

    World()
    {
        ++alpha.impl()->transactionDepth;
        a.setValue(alpha, 5);
        b.setValue(alpha, 6);
        --alpha.impl()->transactionDepth;
        alpha.impl()->current.oldStates.clear();
    }
    ~World()
    {
        alpha.remove();
    }
};

void BM_ReadRoot(benchmark::State& state)
{
    World w;
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(w.viaA->getValue(w.root)); });
}
BENCHMARK(BM_ReadRoot);

void BM_ReadNamedCacheHit(benchmark::State& state)
{
    World w;
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(w.viaA->getValue(w.alpha)); });
}
BENCHMARK(BM_ReadNamedCacheHit);

// Alternating objects defeats the one-entry cache: every read hashes.
void BM_ReadNamedCacheMiss(benchmark::State& state)
{
    World w;
    tavbench::countAllocations(state, [&] {
        benchmark::DoNotOptimize(w.viaA->getValue(w.alpha));
        benchmark::DoNotOptimize(w.viaB->getValue(w.alpha));
    });
    state.SetItemsProcessed(state.iterations() * 2);
}
BENCHMARK(BM_ReadNamedCacheMiss);

// A named deviant without a state of its own reads through to root.
void BM_ReadNamedThroughToRoot(benchmark::State& state)
{
    World w;
    Deviant beta = w.manager.createDeviantWithName("beta");
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(w.viaA->getValue(beta)); });
}
BENCHMARK(BM_ReadNamedThroughToRoot);

// Each iteration copies root's state into the deviant, then drops the copy
// so that the next write is a first write again.
void BM_FirstWriteNamed(benchmark::State& state)
{
    World w;
    Deviant beta = w.manager.createDeviantWithName("beta");
    ++beta.impl()->transactionDepth;
    beta.impl()->maximumUndoLength = 0;
    int value = 100;
    tavbench::countAllocations(state, [&] {
        w.viaA->setValue(beta, ++value);
        w.a.internal_setDeviation(beta, nullptr);
    });
    --beta.impl()->transactionDepth;
    beta.remove();
}
BENCHMARK(BM_FirstWriteNamed);

} // namespace

BENCHMARK_MAIN();
