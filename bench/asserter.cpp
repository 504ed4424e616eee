#include <tav/kernel/util/Asserter.h>

#include <benchmark/benchmark.h>

using namespace TAV;

// The cost every check site pays when the condition holds.
static void BM_PassingMakeAndHandle(benchmark::State& state)
{
    int value = 42;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        Asserter::Make<Exception>(value > 0, "value %d out of range", value).handle("bench/asserter", __LINE__, "");
    }
}
BENCHMARK(BM_PassingMakeAndHandle);

static void BM_PassingPlainAsserter(benchmark::State& state)
{
    int value = 42;
    for (auto _ : state) {
        benchmark::DoNotOptimize(value);
        Asserter::Make(value > 0).handle("bench/asserter", __LINE__, "");
    }
}
BENCHMARK(BM_PassingPlainAsserter);

static void BM_FailingCheckCaught(benchmark::State& state)
{
    for (auto _ : state) {
        try {
            Asserter::Make<Exception>(false, "value %d out of range", -1).handle("bench/asserter", __LINE__, "");
        } catch (const Exception& e) {
            benchmark::DoNotOptimize(e.what());
        }
    }
}
BENCHMARK(BM_FailingCheckCaught);

// Building captures the frames; formatting them waits for GetStackTrace.
static void BM_ExceptionConstruction(benchmark::State& state)
{
    for (auto _ : state) {
        Exception e("failure");
        benchmark::DoNotOptimize(e.what());
    }
}
BENCHMARK(BM_ExceptionConstruction);

static void BM_ExceptionConstructionAndTrace(benchmark::State& state)
{
    for (auto _ : state) {
        Exception e("failure");
        benchmark::DoNotOptimize(e.GetStackTrace().size());
    }
}
BENCHMARK(BM_ExceptionConstructionAndTrace)->Iterations(200);

static void BM_CopyThenTraceIsCached(benchmark::State& state)
{
    const Exception original("failure");
    original.GetStackTrace();
    for (auto _ : state) {
        Exception copy = original;
        benchmark::DoNotOptimize(copy.GetStackTrace().size());
    }
}
BENCHMARK(BM_CopyThenTraceIsCached);

BENCHMARK_MAIN();
