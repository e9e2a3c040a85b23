// The one replaced operator new of the tests. A program that links zorl2_test_allocations has every
// ordinary form of operator new and delete replaced, for the libraries too. It counts allocations
// and makes them fail on demand.
//
// Not for sanitized builds: a sanitizer replaces the same functions.
#pragma once

#include <atomic>
#include <cstddef>
#include <limits>
#include <new>
#include <string>
#include <vector>

namespace zorl2_test {

constexpr long kUnlimited = std::numeric_limits<long>::max();

// Byte that fills new memory while a Watch exists, so that a test sees what nobody wrote.
constexpr unsigned char kPattern = 0xA5;

struct AllocationState {
  std::atomic<long> made{0};         // Allocations of the process so far.
  std::atomic<long> live{0};         // Allocations not yet released.
  std::atomic<std::size_t> heap{0};  // Bytes not yet released, with the overhead of each block.
  std::atomic<std::size_t> peak{0};  // The largest value of `heap` so far.
};
extern AllocationState allocations;

// Fails allocations while it exists. Must enclose only the tested call, because the allocations of
// an EXPECT would fail, too.
class Failing {
 public:
  // Grants `granted` allocations; then the next `failures` fail.
  explicit Failing(long granted, long failures = kUnlimited);
  ~Failing();
  Failing(const Failing&) = delete;
  Failing& operator=(const Failing&) = delete;
};

// One call of operator new or delete: "new[] nothrow" with a size, "delete" without.
struct Event {
  const char* form;
  std::size_t size;
  void* memory;
};

// Records the events while it exists, up to kKept of them.
class Watch {
 public:
  static constexpr int kKept = 64;
  // Asked before malloc for each allocation; may return memory or null.
  using Hook = void* (*)(const Event& event);

  explicit Watch(Hook hook = nullptr);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
};

// The events of the last Watch: their number, one of the kept events, and all kept events as texts
// such as "new 16" and "delete".
int EventCount();
const Event& EventAt(int i);
std::vector<std::string> Events();

// The number of allocations that the call makes.
template <typename Call>
long AllocationsOf(const Call& call) {
  const long before = allocations.made;
  call();
  return allocations.made - before;
}

}  // namespace zorl2_test
