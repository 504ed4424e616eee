// Iteration over a derived union of three stored parts of 10,000 elements
// each, against iteration over one stored sequence of 30,000; and the same
// parts behind a filter that must test each element's class.

#include "kernel/TAV/NSImplementation/PropertyImpl.h"

#include <tav/TAV/NamedElement_h.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/MakeSequence.h>
#include <tav/kernel/containers/sequence/views/Views.h>
#include <tav/kernel/deviant/DeviantManager.h>

#include <benchmark/benchmark.h>

namespace {

using namespace TAV;

constexpr int kPart = 10'000;

// Stored multi-valued properties are unique multi-indexes.
template <class T>
Sequence<T> stored(Deviant aRoot)
{
    return MakeSequence<T>({aRoot, MULTI_INDEX, true, false});
}

struct World {
    DeviantManager manager;
    Deviant root = manager.getRoot();
    Sequence<Property> parts[3] = {stored<Property>(root), stored<Property>(root), stored<Property>(root)};
    Sequence<Property> whole = stored<Property>(root);
    Sequence<NamedElement> namedParts[3] = {stored<NamedElement>(root), stored<NamedElement>(root),
                                            stored<NamedElement>(root)};

    World()
    {
        for (Sequence<Property> const& part : parts)
            for (int i = 0; i < kPart; ++i) {
                auto* object = new NSImplementation::PropertyImpl();
                object->rootDeviant = root;
                object->internal_createDeviation(root);
                Property const p(object, root);
                part.push_back(p);
                whole.push_back(p);
            }
        for (int k = 0; k < 3; ++k)
            for (Property const& p : parts[k])
                namedParts[k].push_back(p);
    }
    static World& instance()
    {
        static World* const sWorld = new World(); // lives to the end: objects outlive every sequence
        return *sWorld;
    }
};

template <class S>
void walk(benchmark::State& state, S const& aSequence)
{
    for (auto _ : state) {
        int n = 0;
        for (auto const& element : aSequence) {
            benchmark::DoNotOptimize(element.internal_counted());
            ++n;
        }
        if (n != 3 * kPart)
            state.SkipWithError("wrong count");
    }
    state.SetItemsProcessed(state.iterations() * 3 * kPart);
}

void BM_StoredSequence(benchmark::State& state)
{
    walk(state, World::instance().whole);
}

// The parts' element class is the union's, so no element is tested.
void BM_UnionOfThreeParts(benchmark::State& state)
{
    World& w = World::instance();
    walk(state, unionOf<NamedElement>(w.root, w.parts[0], w.parts[1], w.parts[2]));
}

// Parts of NamedElement shown as Property: each element's class is tested.
void BM_UnionOfThreeFilteredParts(benchmark::State& state)
{
    World& w = World::instance();
    walk(state, unionOf<Property>(w.root, filtered<Property>(w.namedParts[0]), filtered<Property>(w.namedParts[1]),
                                  filtered<Property>(w.namedParts[2])));
}

BENCHMARK(BM_StoredSequence)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_UnionOfThreeParts)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_UnionOfThreeFilteredParts)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
