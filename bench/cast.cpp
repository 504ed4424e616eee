// A cast costs two array lookups and one thunk call; no allocation, no string
// comparison after the first use of a ClassInfo.

#include "bench/AllocationCounter.h"

#include <tav/kernel/util/ReferenceCountingIntf.h>
#include <tav/kernel/visitor/CooperativeVisitor.h>

#include <benchmark/benchmark.h>

namespace {

using namespace TAV::CooperativeVisitor;
using internal::classInfo;
using internal::ClassMetaInfo;

struct Left : TAV::ReferenceCountingIntf {
    int left = 1;
};
struct Right : TAV::ReferenceCountingIntf {
    int right = 2;
};
struct Both final : Left, Right {
    void* cast(internal::ClassInfo const& info) const override { return metaInfo().cast(this, info); }
    VisitEntry getVisitMethod(DispatchTable const& table) const override { return metaInfo().visit(this, table); }

    static ClassMetaInfo const& metaInfo()
    {
        static ClassMetaInfo const sInfo{
            {classInfo<Both>(), [](void* p) -> void* { return p; }},
            {classInfo<Left>(), [](void* p) -> void* { return static_cast<Left*>(static_cast<Both*>(p)); }},
            {classInfo<Right>(), [](void* p) -> void* { return static_cast<Right*>(static_cast<Both*>(p)); }},
            {classInfo<TAV::ReferenceCountingIntf>(), [](void* p) -> void* {
                 return static_cast<TAV::ReferenceCountingIntf*>(static_cast<Left*>(static_cast<Both*>(p)));
             }},
        };
        return sInfo;
    }
};

void BM_CastSideways(benchmark::State& state)
{
    Both object;
    Left* volatile start = &object;
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(start->cast(classInfo<Right>())); });
}
BENCHMARK(BM_CastSideways);

void BM_CastMiss(benchmark::State& state)
{
    struct Stranger {};
    Both object;
    Left* volatile start = &object;
    tavbench::countAllocations(state, [&] { benchmark::DoNotOptimize(start->cast(classInfo<Stranger>())); });
}
BENCHMARK(BM_CastMiss);

int gSink = 0;
void onRight(VisitorBase&, Right& r)
{
    gSink += r.right;
}

void BM_VisitNearestBase(benchmark::State& state)
{
    static DispatchTable sTable;
    Visitor<void, TAV::ReferenceCountingIntf>::bind<VisitorBase, Right, &onRight>(sTable);
    Visitor<void, TAV::ReferenceCountingIntf> visitor(sTable);
    Both object;
    tavbench::countAllocations(state, [&] { visitor.visit(static_cast<Left&>(object)); });
    benchmark::DoNotOptimize(gSink);
}
BENCHMARK(BM_VisitNearestBase);

} // namespace

BENCHMARK_MAIN();
