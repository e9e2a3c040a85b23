// Counts what the calling thread takes from the heap. A program that links allocation_counter.cpp
// has every operator new replaced, those that the libraries call included.
#pragma once

#include <cstdint>

namespace zorl2_bench {

// The calls of any operator new by this thread so far.
std::uint64_t AllocationsOfThisThread() noexcept;

}  // namespace zorl2_bench
