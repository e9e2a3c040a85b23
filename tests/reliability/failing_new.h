// operator new that fails on demand. Linking failing_new.cpp replaces the program's own, so this
// belongs in plain builds only: a sanitizer has a replacement of its own.
#pragma once

#include <cstddef>

namespace proof {

// From now on the n-th allocation fails, counted from 1, once.
void FailAllocation(long n);

// The same, and all behind it fail too.
void FailAllocationsFrom(long n);

// No allocation fails any more. True when the one that FailAllocation chose has failed.
bool StopFailing();

// Allocations not yet freed.
long LiveAllocations();

// The size asked for in the n-th allocation since the last FailAllocation, for n up to 16.
std::size_t AllocationSize(long n);

}  // namespace proof
