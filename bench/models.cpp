// Models at scale: creating n objects in one transaction and committing, undo and redo
// of that creation, the model's end, and finding objects by id. Per-object costs must
// stay flat from 10,000 to 1,000,000 objects.

#include <tav/TAV/Comment_h.h>
#include <tav/TAV/Model_h.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/util/ObjectLookup.h>

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

using TAV::Deviant;
using TAV::Model;

template <class X>
void fill(Model const& aModel, long long aCount)
{
    for (long long i = 0; i < aCount; ++i)
        benchmark::DoNotOptimize(X::create(aModel));
}

// A model with n objects of X made and committed in one transaction.
template <class X>
Model populated(long long aCount)
{
    Model model = Model::create();
    Deviant const root = model.getDeviant();
    root.beginTransaction("fill");
    fill<X>(model, aCount);
    root.commitTransaction();
    return model;
}

std::size_t heapInUse()
{
    return mallinfo2().uordblks;
}

template <class X>
void BM_CreateAndCommit(benchmark::State& state)
{
    long long const n = state.range(0);
    double bytes = 0;
    for (auto _ : state) {
        state.PauseTiming();
        std::optional<Model> model = Model::create();
        Deviant const root = model->getDeviant();
        std::size_t const before = heapInUse();
        state.ResumeTiming();
        root.beginTransaction("create");
        fill<X>(*model, n);
        root.commitTransaction();
        state.PauseTiming();
        bytes = static_cast<double>(heapInUse() - before) / static_cast<double>(n);
        model.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * n);
    state.counters["bytes/object"] = bytes;
}

void BM_UndoRedoCreation(benchmark::State& state)
{
    long long const n = state.range(0);
    Model const model = populated<TAV::Comment>(n);
    Deviant const root = model.getDeviant();
    for (auto _ : state) {
        root.undo();
        root.redo();
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void BM_DestroyModel(benchmark::State& state)
{
    long long const n = state.range(0);
    for (auto _ : state) {
        state.PauseTiming();
        std::optional<Model> model = populated<TAV::Comment>(n);
        state.ResumeTiming();
        model.reset();
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void BM_GetObjectById(benchmark::State& state)
{
    long long const n = state.range(0);
    Model const model = populated<TAV::Comment>(n);
    std::vector<TAV::String> ids;
    std::mt19937 random(7);
    std::uniform_int_distribution<long long> pick(2, n + 1);
    for (int i = 0; i < 4096; ++i)
        ids.emplace_back("_tav_" + std::to_string(pick(random)));
    std::size_t i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(TAV::getObjectById(ids[i++ & 4095], model));
    state.SetItemsProcessed(state.iterations());
}

void sizes(benchmark::internal::Benchmark* b)
{
    b->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_CreateAndCommit<TAV::Comment>)->Apply(sizes);
BENCHMARK(BM_CreateAndCommit<TAV::Property>)->Apply(sizes);
BENCHMARK(BM_UndoRedoCreation)->Apply(sizes);
BENCHMARK(BM_DestroyModel)->Apply(sizes);
BENCHMARK(BM_GetObjectById)->Arg(10'000)->Arg(100'000)->Arg(1'000'000);

} // namespace

BENCHMARK_MAIN();
