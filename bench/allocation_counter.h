// Counts the heap allocations of the calling thread. A program that links allocation_counter.cpp
// has every operator new replaced, also for its libraries.
#pragma once

#include <cstdint>

namespace zorl2_bench {

// The number of calls of any operator new by this thread so far.
std::uint64_t AllocationsOfThisThread() noexcept;

}  // namespace zorl2_bench
