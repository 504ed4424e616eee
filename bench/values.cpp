#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>

#include <benchmark/benchmark.h>

#include <string>

// Text conversions run once per attribute of every object read or written.
// The "Stream" inputs leave the from_chars road (a leading blank) and show
// what a stream extraction costs.

static void BM_IntegerToString(benchmark::State& state)
{
    BRIX::TypeInfo const& info = TAV::Integer::getTypeInfo();
    BRIX::any const value = TAV::Integer(-1234567);
    for (auto _ : state)
        benchmark::DoNotOptimize(info.convertToString(value));
}
BENCHMARK(BM_IntegerToString);

static void integerFromString(benchmark::State& state, std::string const& text)
{
    BRIX::TypeInfo const& info = TAV::Integer::getTypeInfo();
    for (auto _ : state) {
        BRIX::ErrorHolder errors;
        benchmark::DoNotOptimize(info.convertFromString(text, errors));
    }
}
BENCHMARK_CAPTURE(integerFromString, Decimal, std::string("-1234567"));
BENCHMARK_CAPTURE(integerFromString, Hex, std::string("0x7fff0000"));
BENCHMARK_CAPTURE(integerFromString, Stream, std::string(" -1234567"));

static void doubleToString(benchmark::State& state, double value)
{
    BRIX::TypeInfo const& info = TAV::Double::getTypeInfo();
    BRIX::any const any = TAV::Double(value);
    for (auto _ : state)
        benchmark::DoNotOptimize(info.convertToString(any));
}
BENCHMARK_CAPTURE(doubleToString, Short, 0.1);
BENCHMARK_CAPTURE(doubleToString, SeventeenDigits, 0.30000000000000004);
BENCHMARK_CAPTURE(doubleToString, Denormal, 4.9406564584124654e-324);

static void doubleFromString(benchmark::State& state, std::string const& text)
{
    BRIX::TypeInfo const& info = TAV::Double::getTypeInfo();
    for (auto _ : state) {
        BRIX::ErrorHolder errors;
        benchmark::DoNotOptimize(info.convertFromString(text, errors));
    }
}
BENCHMARK_CAPTURE(doubleFromString, Short, std::string("0.1"));
BENCHMARK_CAPTURE(doubleFromString, SeventeenDigits, std::string("0.30000000000000004"));
BENCHMARK_CAPTURE(doubleFromString, Stream, std::string(" 0.30000000000000004"));
BENCHMARK_CAPTURE(doubleFromString, Invalid, std::string("abc"));
BENCHMARK_MAIN();
