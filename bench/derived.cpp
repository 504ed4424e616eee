// Iteration over the derived properties of a class with 10,000 attributes and
// 10,000 operations, against iteration over the two stored lists they show:
// ownedMember (a union of three parts), member (the same lists reached through
// feature's and ownedMember's parts), feature (a union holding a union) and
// ownedElement (the containee list, each element's class tested).

#include "kernel/TAV/NSImplementation/ClassImpl.h"
#include "kernel/TAV/NSImplementation/OperationImpl.h"
#include "kernel/TAV/NSImplementation/PropertyImpl.h"

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Operation_h.h>
#include <tav/TAV/Property_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include <tav/kernel/deviant/DeviantManager.h>

#include <benchmark/benchmark.h>

namespace {

using namespace TAV;

constexpr int kEach = 10'000;

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
    Class owner{make<NSImplementation::ClassImpl>(root), root};

    World()
    {
        root.setMaximumUndoStackLength(0);
        root.beginTransaction("fill");
        Sequence<Property> const attributes = owner.getOwnedAttributes();
        Sequence<Operation> const operations = owner.getOwnedOperations();
        for (int i = 0; i < kEach; ++i) {
            attributes.push_back(Property(make<NSImplementation::PropertyImpl>(root), root));
            operations.push_back(Operation(make<NSImplementation::OperationImpl>(root), root));
        }
        root.commitTransaction();
    }
    ~World()
    {
        root.beginTransaction("clear");
        owner.getOwnedAttributes().clear();
        owner.getOwnedOperations().clear();
        root.commitTransaction();
    }
};

template <class T>
void walk(ImmutableSequence<T> const& aSequence)
{
    for (auto const& e : aSequence)
        benchmark::DoNotOptimize(e);
}

void BM_StoredLists(benchmark::State& state)
{
    World world;
    Class const& c = world.owner;
    for (auto _ : state) {
        walk(ImmutableSequence<Property>(c.getOwnedAttributesWithoutAssociation()));
        walk(ImmutableSequence<Operation>(c.getOwnedOperationsWithoutAssociation()));
    }
    state.SetItemsProcessed(state.iterations() * 2 * kEach);
}
BENCHMARK(BM_StoredLists)->Unit(benchmark::kMicrosecond);

void BM_OwnedMembers(benchmark::State& state)
{
    World world;
    Class const& c = world.owner;
    for (auto _ : state)
        walk(ImmutableSequence<NamedElement>(c.getOwnedMembersWithoutAssociation()));
    state.SetItemsProcessed(state.iterations() * 2 * kEach);
}
BENCHMARK(BM_OwnedMembers)->Unit(benchmark::kMicrosecond);

// Through the immutable handle, as a reader holds it.
void BM_OwnedMembersImmutable(benchmark::State& state)
{
    World world;
    ImmutableClass const c = world.owner;
    for (auto _ : state)
        walk(c.getOwnedMembers());
    state.SetItemsProcessed(state.iterations() * 2 * kEach);
}
BENCHMARK(BM_OwnedMembersImmutable)->Unit(benchmark::kMicrosecond);

void BM_Members(benchmark::State& state)
{
    World world;
    Class const& c = world.owner;
    for (auto _ : state)
        walk(ImmutableSequence<NamedElement>(c.getMembersWithoutAssociation()));
    state.SetItemsProcessed(state.iterations() * 2 * kEach);
}
BENCHMARK(BM_Members)->Unit(benchmark::kMicrosecond);

void BM_Features(benchmark::State& state)
{
    World world;
    Class const& c = world.owner;
    for (auto _ : state)
        walk(ImmutableSequence<Feature>(c.getFeaturesWithoutAssociation()));
    state.SetItemsProcessed(state.iterations() * 2 * kEach);
}
BENCHMARK(BM_Features)->Unit(benchmark::kMicrosecond);

void BM_OwnedElements(benchmark::State& state)
{
    World world;
    Class const& c = world.owner;
    for (auto _ : state)
        walk(ImmutableSequence<Element>(c.getOwnedElementsWithoutAssociation()));
    state.SetItemsProcessed(state.iterations() * 2 * kEach);
}
BENCHMARK(BM_OwnedElements)->Unit(benchmark::kMicrosecond);

// Indexed access walks the parts: one at(i) in the middle of the second part.
void BM_OwnedMembersAt(benchmark::State& state)
{
    World world;
    Class const& c = world.owner;
    Sequence<NamedElement> const members = c.getOwnedMembersWithoutAssociation();
    for (auto _ : state)
        benchmark::DoNotOptimize(members.at(kEach + kEach / 2));
}
BENCHMARK(BM_OwnedMembersAt)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
