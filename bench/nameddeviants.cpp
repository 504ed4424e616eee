// A change of k objects in a named deviant, and its assignment to root,
// in a population of n: both must follow k, not n.

#include "kernel/TAV/NSImplementation/PropertyImpl.h"
#include "tests/deviant/Counter.h"

#include <tav/TAV/Property_h.h>
#include <tav/kernel/deviant/DeviantManager.h>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <vector>

namespace {

using tavtest::Counter;
using TAV::Deviant;

constexpr int kTouched = 1000;

struct Population {
    explicit Population(long long n)
    {
        for (long long i = 0; i < n; ++i)
            objects.make(root, static_cast<int>(i));
        stride = n / kTouched;
    }

    Counter& touched(int i) { return objects[static_cast<std::size_t>(i) * stride]; }
    void changeInNamed()
    {
        named.beginTransaction("named");
        ++value;
        for (int i = 0; i < kTouched; ++i)
            touched(i).setValue(named, value);
        named.commitTransaction();
    }
    void assign()
    {
        root.beginTransaction("assign");
        named.assignToRoot();
        root.commitTransaction();
    }

    tavtest::Counters objects; // outlives the manager, whose maps count them
    TAV::DeviantManager manager;
    Deviant root = manager.getRoot();
    Deviant named = manager.createDeviantWithName("named");
    long long stride;
    int value = 0;
};

Population& population(long long n)
{
    static std::map<long long, std::unique_ptr<Population>> sWorlds;
    auto& world = sWorlds[n];
    if (!world)
        world = std::make_unique<Population>(n);
    return *world;
}

void perTouched(benchmark::State& state)
{
    state.counters["per object"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kTouched,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// begin + k writes + commit, in the named deviant.
void BM_NamedChange(benchmark::State& state)
{
    Population& p = population(state.range(0));
    for (auto _ : state)
        p.changeInNamed();
    perTouched(state);
}

// root's begin + assignToRoot of k changed objects + root's commit.
void BM_AssignToRoot(benchmark::State& state)
{
    Population& p = population(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        p.changeInNamed();
        state.ResumeTiming();
        p.assign();
        state.PauseTiming();
        p.root.clearUndoStack();
        state.ResumeTiming();
    }
    perTouched(state);
}

// The same on a generated metaclass, whose states are larger and hold lists.
void BM_AssignToRootGenerated(benchmark::State& state)
{
    using TAV::NSImplementation::PropertyImpl;
    TAV::DeviantManager manager;
    Deviant const root = manager.getRoot();
    Deviant const named = manager.createDeviantWithName("named");
    std::vector<TAV::Property> inNamed;
    for (int i = 0; i < kTouched; ++i) {
        auto* object = new PropertyImpl();
        object->rootDeviant = root;
        object->internal_createDeviation(root);
        inNamed.emplace_back(object, named);
    }
    TAV::String const names[] = {TAV::String("a"), TAV::String("b")};
    int round = 0;
    for (auto _ : state) {
        state.PauseTiming();
        named.beginTransaction();
        for (TAV::Property const& p : inNamed)
            p.setName(names[round & 1]);
        named.commitTransaction();
        ++round;
        state.ResumeTiming();
        root.beginTransaction();
        named.assignToRoot();
        root.commitTransaction();
        state.PauseTiming();
        root.clearUndoStack();
        state.ResumeTiming();
    }
    perTouched(state);
    manager.removeDeviantWithName("named");
}

BENCHMARK(BM_NamedChange)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AssignToRoot)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_AssignToRootGenerated)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
