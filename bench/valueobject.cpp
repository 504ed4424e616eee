// A value read back from an object (TAVCast) is a cast and a type-name test:
// no allocation. Wrapping a value as an object allocates the object and the
// value's holder.

#include "bench/AllocationCounter.h"

#include <tav/TAV/Integer.h>
#include <tav/TAV/String.h>
#include <tav/kernel/util/TAVCast.h>

namespace {

using namespace TAV;

void BM_TAVCastInteger(benchmark::State& state)
{
    Object const carried = Integer(42);
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(TAVCast<Integer>(carried)); });
}
BENCHMARK(BM_TAVCastInteger);

void BM_IsValueObject(benchmark::State& state)
{
    Object const carried = Integer(42);
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(isValueObject(carried)); });
}
BENCHMARK(BM_IsValueObject);

void BM_IntegerToObject(benchmark::State& state)
{
    Integer const value(42);
    tavbench::countAllocations(state, [&] {
        Object o = value;
        benchmark::DoNotOptimize(o.internal_intf());
    });
}
BENCHMARK(BM_IntegerToObject);

void BM_StringToObjectAndBack(benchmark::State& state)
{
    String const value("a name of some length");
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(TAVCast<String>(Object(value)).size()); });
}
BENCHMARK(BM_StringToObjectAndBack);

} // namespace

BENCHMARK_MAIN();
