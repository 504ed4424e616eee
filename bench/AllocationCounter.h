#pragma once

// Counts every global allocation of the process, so a benchmark can show
// that its loop allocates nothing. Include in exactly one file per binary.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdlib>
#include <new>

namespace tavbench {
inline std::size_t gAllocations = 0;

// Reports allocations per iteration of the timed loop.
template <class F>
void countAllocations(benchmark::State& state, F&& body)
{
    std::size_t const before = gAllocations;
    for (auto _ : state)
        body();
    state.counters["allocs/iter"] =
        benchmark::Counter(static_cast<double>(gAllocations - before), benchmark::Counter::kAvgIterations);
}
} // namespace tavbench

// Kept out of line, like the deletes below: inlined into a caller, GCC would
// pair malloc with operator delete (or new with free) and warn of a mismatch.
__attribute__((noinline)) void* operator new(std::size_t size)
{
    ++tavbench::gAllocations;
    if (void* p = std::malloc(size ? size : 1))
        return p;
    throw std::bad_alloc();
}
__attribute__((noinline)) void operator delete(void* p) noexcept
{
    std::free(p);
}
__attribute__((noinline)) void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}
