// Change tracking at scale: commit, undo and redo of a transaction that
// touches k objects in a population of n, and a change of k objects in a named
// deviant with its assignment to root, whose costs must follow k and not n;
// and the unit cost of it all, the first write to an object in a transaction
// of a named deviant.

#include "kernel/TAV/NSImplementation/PropertyImpl.h"
#include "kernel/deviant/DeviantImpl.h"
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
    ~Population()
    {
        root.clearUndoStack();
        objects.forgetModel(); // they outlive the manager
    }

    // Spread over the whole population, so that no cache hides its size.
    Counter& touched(int i) { return objects[static_cast<std::size_t>(i) * stride]; }
    void transaction()
    {
        root.beginTransaction("bench");
        ++value;
        for (int i = 0; i < kTouched; ++i)
            touched(i).setValue(root, value);
        root.commitTransaction();
    }

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
    state.counters["per touched"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kTouched,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// begin + k writes + commit.
void BM_Commit(benchmark::State& state)
{
    Population& p = population(state.range(0));
    for (auto _ : state) {
        p.transaction();
        state.PauseTiming();
        p.root.clearUndoStack();
        state.ResumeTiming();
    }
    perTouched(state);
}

void BM_Undo(benchmark::State& state)
{
    Population& p = population(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        p.transaction();
        state.ResumeTiming();
        p.root.undo();
    }
    p.root.clearUndoStack();
    perTouched(state);
}

void BM_Redo(benchmark::State& state)
{
    Population& p = population(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        p.transaction();
        p.root.undo();
        state.ResumeTiming();
        p.root.redo();
    }
    p.root.clearUndoStack();
    perTouched(state);
}

// The whole cycle: begin + k writes + commit + undo + redo.
void BM_Cycle(benchmark::State& state)
{
    Population& p = population(state.range(0));
    for (auto _ : state) {
        p.transaction();
        p.root.undo();
        p.root.redo();
    }
    p.root.clearUndoStack();
    perTouched(state);
}

BENCHMARK(BM_Commit)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Undo)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Redo)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Cycle)->Arg(10'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

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


// A generated metaclass in a named deviant, with `range` other objects that
// hold a value in a process-wide sparse map, as a loaded model's do.
void BM_FirstWriteNamedGenerated(benchmark::State& state)
{
    using TAV::NSImplementation::PropertyImpl;
    TAV::DeviantManager manager;
    Deviant const root = manager.getRoot();
    Deviant const named = manager.createDeviantWithName("named");
    auto make = [&] {
        auto* object = new PropertyImpl();
        object->rootDeviant = root;
        object->internal_createDeviation(root);
        return TAV::Property(object, root);
    };
    std::vector<TAV::Property> others;
    root.beginTransaction();
    for (long long i = 0; i < state.range(0); ++i)
        others.push_back(make()), others.back().setExternalId(TAV::String("x"));
    root.commitTransaction();
    root.clearUndoStack();

    TAV::Property const p = make();
    TAV::Property const inNamed(p.internal_intf(), named);
    PropertyImpl* const impl = static_cast<PropertyImpl*>(p.internal_intf());
    named.beginTransaction();
    named.impl()->maximumUndoLength = 0; // nothing saved: the copy, the map and the sparse look-ups alone
    TAV::String const names[] = {TAV::String("a"), TAV::String("b")};
    int i = 0;
    for (auto _ : state) {
        inNamed.setName(names[++i & 1]);
        impl->internal_setDeviation(named, nullptr);
    }
    named.impl()->maximumUndoLength = 1;
    named.cancelTransaction();
}
BENCHMARK(BM_FirstWriteNamedGenerated)->Arg(0)->Arg(10'000);

} // namespace

BENCHMARK_MAIN();
