// Counts the allocations of the whole process, libraries included, and makes one of them fail.
// Replaces operator new and delete: include it in exactly one source file of an executable.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <new>

namespace zorl2_test {

inline std::atomic<long> allocations{0};
inline std::atomic<long> deallocations{0};
// The allocation, counted from now on, that throws std::bad_alloc.
inline std::atomic<long> until_failure{std::numeric_limits<long>::max()};

// While it lives, every allocation from the given one on fails: 0 fails the next. The allocations
// of a test's own expectations would fail too, so it should live around the tested call alone.
class FailAllocations {
 public:
  explicit FailAllocations(long after) { until_failure = after; }
  ~FailAllocations() { until_failure = std::numeric_limits<long>::max(); }
  FailAllocations(const FailAllocations&) = delete;
  FailAllocations& operator=(const FailAllocations&) = delete;
};

// How many allocations the call makes.
template <typename Call>
long AllocationsOf(const Call& call) {
  const long before = allocations;
  call();
  return allocations - before;
}

// Runs the call again and again, with one more allocation granted each time, until it gets through;
// check() runs after each failure. Returns the number of failures.
template <typename Call, typename Check>
long FailEachAllocation(const Call& call, const Check& check) {
  for (long granted = 0;; ++granted) {
    bool failed = false;
    {
      const FailAllocations guard(granted);
      try {
        call();
      } catch (const std::bad_alloc&) {
        failed = true;
      }
    }
    if (!failed) return granted;
    check();
  }
}

inline void* CountedAllocation(std::size_t size) {
  if (until_failure.fetch_sub(1) <= 0) return nullptr;
  ++allocations;
  return std::malloc(size == 0 ? 1 : size);
}

inline void CountedDeallocation(void* memory) {
  if (memory != nullptr) ++deallocations;
  std::free(memory);
}

}  // namespace zorl2_test

void* operator new(std::size_t size) {
  void* memory = zorl2_test::CountedAllocation(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return zorl2_test::CountedAllocation(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return zorl2_test::CountedAllocation(size);
}
void operator delete(void* memory) noexcept { zorl2_test::CountedDeallocation(memory); }
void operator delete(void* memory, std::size_t) noexcept {
  zorl2_test::CountedDeallocation(memory);
}
void operator delete[](void* memory) noexcept { zorl2_test::CountedDeallocation(memory); }
void operator delete[](void* memory, std::size_t) noexcept {
  zorl2_test::CountedDeallocation(memory);
}
