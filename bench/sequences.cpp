// Sequences against std::vector: push_back, at, contains, erase and
// iteration from 10 to 1,000,000 elements; what an empty sequence allocates;
// what copying a list costs, before and after the first write.

#include "bench/AllocationCounter.h"

#include "kernel/TAV/NSImplementation/PropertyImpl.h"

#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/deviant/DeviantManager.h>

#include <algorithm>
#include <vector>

namespace {

using namespace TAV;

constexpr int kMax = 1'000'000;

// One pool of distinct objects for every benchmark, made once.
struct World {
    DeviantManager manager;
    Deviant root = manager.getRoot();
    std::vector<Property> pool;

    World()
    {
        pool.reserve(kMax);
        for (int i = 0; i < kMax; ++i) {
            auto* object = new NSImplementation::PropertyImpl();
            object->rootDeviant = root;
            object->internal_createDeviation(root);
            pool.emplace_back(object, root);
        }
    }
    static World& instance()
    {
        static World* const sWorld = new World(); // lives to the end: objects outlive every sequence
        return *sWorld;
    }
};

// The baseline: a vector of handles.
struct Vector {
    std::vector<Property> v;
    void push_back(Property const& p) { v.push_back(p); }
    ImmutableProperty at(int i) const { return v[static_cast<std::size_t>(i)]; }
    Property get(int i) const { return v[static_cast<std::size_t>(i)]; }
    bool contains(Property const& p) const { return std::find(v.begin(), v.end(), p) != v.end(); }
    void erase(int i) { v.erase(v.begin() + i); }
    int size() const { return static_cast<int>(v.size()); }
    auto begin() const { return v.begin(); }
    auto end() const { return v.end(); }
};

template <SequenceImplementation aImpl, bool aUnique>
struct Made {
    Sequence<Property> s = MakeSequence<Property>({World::instance().root, aImpl, aUnique, false});
    void push_back(Property const& p) { s.push_back(p); }
    ImmutableProperty at(int i) const { return static_cast<ImmutableSequence<Property> const&>(s).at(i); }
    Property get(int i) const { return s.at(i); }
    bool contains(Property const& p) const { return s.contains(p); }
    void erase(int i) { s.erase(i); }
    int size() const { return s.size(); }
    auto begin() const { return static_cast<ImmutableSequence<Property> const&>(s).begin(); }
    auto end() const { return static_cast<ImmutableSequence<Property> const&>(s).end(); }
};

using List = Made<STD_VECTOR, false>;
using MultiIndex = Made<MULTI_INDEX, false>;
using UniqueMultiIndex = Made<MULTI_INDEX, true>;

template <class S>
S filled(int n)
{
    S s;
    for (int i = 0; i < n; ++i)
        s.push_back(World::instance().pool[static_cast<std::size_t>(i)]);
    return s;
}

// A fixed walk over the indices that no prefetcher follows.
int scatter(std::int64_t step, int n)
{
    return static_cast<int>((step * 7919) % n);
}

template <class S>
void BM_PushBack(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    World::instance();
    for (auto _ : state)
        benchmark::DoNotOptimize(filled<S>(n).size());
    state.SetItemsProcessed(state.iterations() * n);
}

template <class S>
void BM_At(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    S const s = filled<S>(n);
    std::int64_t step = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(s.at(scatter(++step, n)));
    state.SetItemsProcessed(state.iterations());
}

template <class S>
void BM_Contains(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    S const s = filled<S>(n);
    std::int64_t step = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(s.contains(World::instance().pool[static_cast<std::size_t>(scatter(++step, n))]));
    state.SetItemsProcessed(state.iterations());
}

// Erases the middle element and appends it again, so the size holds.
template <class S>
void BM_EraseMiddleAndPushBack(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    S s = filled<S>(n);
    for (auto _ : state) {
        Property const moved = s.get(n / 2);
        s.erase(n / 2);
        s.push_back(moved);
    }
    if (s.size() != n)
        state.SkipWithError("the size changed");
    state.SetItemsProcessed(state.iterations());
}

template <class S>
void BM_Iterate(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    S const s = filled<S>(n);
    for (auto _ : state)
        for (auto const& element : s)
            benchmark::DoNotOptimize(element);
    state.SetItemsProcessed(state.iterations() * n);
}

#define TAV_SEQUENCE_BENCH(name)                                                                                      \
    BENCHMARK_TEMPLATE(name, Vector)->RangeMultiplier(10)->Range(10, kMax);                                           \
    BENCHMARK_TEMPLATE(name, List)->RangeMultiplier(10)->Range(10, kMax);                                             \
    BENCHMARK_TEMPLATE(name, MultiIndex)->RangeMultiplier(10)->Range(10, kMax);                                       \
    BENCHMARK_TEMPLATE(name, UniqueMultiIndex)->RangeMultiplier(10)->Range(10, kMax)

TAV_SEQUENCE_BENCH(BM_PushBack);
TAV_SEQUENCE_BENCH(BM_At);
TAV_SEQUENCE_BENCH(BM_Contains);
TAV_SEQUENCE_BENCH(BM_EraseMiddleAndPushBack);
TAV_SEQUENCE_BENCH(BM_Iterate);

// Embedded empty sequences, as an object's state holds them: no allocation.
void BM_EmptySequences(benchmark::State& state)
{
    ListQImpl<Property>{}; // the shared null block, made once
    tavbench::countAllocations(state, [] {
        ListQImpl<Property> list;
        MultiIndexImpl<Property, true> multi;
        benchmark::DoNotOptimize(list.generic_size(Deviant()) + multi.generic_size(Deviant()));
    });
}
BENCHMARK(BM_EmptySequences);

// Assigning a list shares its block: O(size) in counts, no allocation.
// The first write afterwards pays the copy.
void BM_ListAssignShares(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    List const source = filled<List>(n);
    List copy;
    tavbench::countAllocations(state, [&] { copy.s.assign(source.s); });
}
BENCHMARK(BM_ListAssignShares)->RangeMultiplier(100)->Range(10, kMax);

void BM_ListAssignThenWrite(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    List const source = filled<List>(n);
    List copy;
    Property const extra = World::instance().pool[0];
    tavbench::countAllocations(state, [&] {
        copy.s.assign(source.s);
        copy.s.push_back(extra);
    });
}
BENCHMARK(BM_ListAssignThenWrite)->RangeMultiplier(100)->Range(10, kMax);

// A multi-index assignment copies its nodes.
void BM_MultiIndexAssignCopies(benchmark::State& state)
{
    int const n = static_cast<int>(state.range(0));
    MultiIndex const source = filled<MultiIndex>(n);
    MultiIndex copy;
    tavbench::countAllocations(state, [&] { copy.s.assign(source.s); });
}
BENCHMARK(BM_MultiIndexAssignCopies)->RangeMultiplier(100)->Range(10, kMax);

} // namespace

BENCHMARK_MAIN();
