#include <tav/logger/LogHandler.h>
#include <tav/logger/Logger.h>

#include <benchmark/benchmark.h>

using namespace TAV;

namespace {

class DiscardingHandler : public LoggerLevelHandler {
public:
    DiscardingHandler() : LoggerLevelHandler(new LevelPrefixFormatter, new LoggerThresholdFilter) {}
    void publish(const LogRecord& record) override { benchmark::DoNotOptimize(getFormatter()->format(record)); }
};

} // namespace

static void BM_LogWithoutHandlers(benchmark::State& state)
{
    for (auto _ : state)
        tavLogDebug("object %d of %s", 7, "model");
}
BENCHMARK(BM_LogWithoutHandlers);

static void BM_LogBelowThreshold(benchmark::State& state)
{
    DiscardingHandler handler;
    Logger::instance().addHandler(&handler);
    for (auto _ : state)
        tavLogDebug("object %d of %s", 7, "model");
    Logger::instance().removeHandler(&handler);
}
BENCHMARK(BM_LogBelowThreshold);

static void BM_LogPublished(benchmark::State& state)
{
    DiscardingHandler handler;
    Logger::instance().addHandler(&handler);
    for (auto _ : state)
        tavLogWarning("object %d of %s", 7, "model");
    Logger::instance().removeHandler(&handler);
}
BENCHMARK(BM_LogPublished);

BENCHMARK_MAIN();
