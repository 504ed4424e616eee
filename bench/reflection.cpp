// A read through the reflection table and through a property storage, against the
// same read through the typed accessor: a reference (Property.class) and a value
// (Property.isReadOnly, which a read wraps in a value object).

#include "kernel/TAV/NSImplementation/ClassImpl.h"
#include "kernel/TAV/NSImplementation/PropertyImpl.h"

#include <tav/TAV/Class_h.h>
#include <tav/TAV/Property_h.h>
#include <tav/TAV/ValueObject_h.h>
#include <tav/kernel/containers/sequence/Sequence.h>
#include "kernel/deviant/DeviantImpl.h"
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/util/IntrospectiveMethods.h>
#include <tav/kernel/util/propertystorage/PropertyStorage.h>
#include <tav/kernel/util/propertystorage/SingleValuedPropertyManager.h>

#include <benchmark/benchmark.h>

namespace {

using namespace TAV;

constexpr unsigned kIsReadOnly = 6, kClass = 11;

struct World {
    DeviantManager manager;
    Deviant root = manager.getRoot();
    Property p = make<NSImplementation::PropertyImpl, Property>();
    Class c = make<NSImplementation::ClassImpl, Class>();
    IntrospectiveMethods const& table = NSInterface::PropertyIntf::sIntrospectiveMethods;
    PropertyStorage classStorage{new SingleValuedPropertyManager(&table, kClass, 0)};
    PropertyStorage readOnlyStorage{new SingleValuedPropertyManager(&table, kIsReadOnly, 1)};
    NSInterface::ClassObjectIntf const* object = ImmutableClassObject(p).internal_intf();

    World()
    {
        root.impl()->transactionDepth = 1;
        root.impl()->maximumUndoLength = 0;
        p.setClass(c);
        p.setIsReadOnly(true);
    }

    template <class Impl, class H>
    H make()
    {
        auto* o = new Impl();
        o->rootDeviant = root;
        o->internal_createDeviation(root);
        return H(o, root);
    }
};

void BM_ReferenceTyped(benchmark::State& state)
{
    World w;
    for (auto _ : state)
        benchmark::DoNotOptimize(w.p.getClass());
}
BENCHMARK(BM_ReferenceTyped);

void BM_ReferenceTable(benchmark::State& state)
{
    World w;
    for (auto _ : state)
        benchmark::DoNotOptimize(w.table.getSingleValued(w.object, w.root, kClass));
}
BENCHMARK(BM_ReferenceTable);

void BM_ReferenceStorageGetOne(benchmark::State& state)
{
    World w;
    ImmutableClassObject const o = w.p;
    PropertyStorage const& storage = w.classStorage;
    for (auto _ : state)
        benchmark::DoNotOptimize(storage.getOne(o));
}
BENCHMARK(BM_ReferenceStorageGetOne);

void BM_ValueTyped(benchmark::State& state)
{
    World w;
    for (auto _ : state)
        benchmark::DoNotOptimize(w.p.isReadOnly());
}
BENCHMARK(BM_ValueTyped);

// The typed read made into the Object that reflection hands out: the value object's cost.
void BM_ValueTypedAsObject(benchmark::State& state)
{
    World w;
    for (auto _ : state)
        benchmark::DoNotOptimize(static_cast<Object>(w.p.isReadOnly()));
}
BENCHMARK(BM_ValueTypedAsObject);

void BM_ValueTable(benchmark::State& state)
{
    World w;
    for (auto _ : state)
        benchmark::DoNotOptimize(w.table.getSingleValued(w.object, w.root, kIsReadOnly));
}
BENCHMARK(BM_ValueTable);

void BM_ValueStorageGetOne(benchmark::State& state)
{
    World w;
    ImmutableClassObject const o = w.p;
    PropertyStorage const& storage = w.readOnlyStorage;
    for (auto _ : state)
        benchmark::DoNotOptimize(storage.getOne(o));
}
BENCHMARK(BM_ValueStorageGetOne);

} // namespace

BENCHMARK_MAIN();
