// Counts what a benchmark takes from the heap. allocations.cpp replaces the global new and delete of the program.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

/// Of all threads, since the program began.
std::size_t AllocationsSoFar();

/// States in the counter "allocations" how many there have been since `before`, for each iteration.
inline void StateAllocationsSince(std::size_t before, benchmark::State &state)
{
  state.counters["allocations"] =
    benchmark::Counter(static_cast<double>(AllocationsSoFar() - before), benchmark::Counter::kAvgIterations);
}
