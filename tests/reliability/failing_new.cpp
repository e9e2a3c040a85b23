#include "tests/reliability/failing_new.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> live{0};
std::atomic<long> seen{0};
std::atomic<long> failing{0};  // 0: none
std::atomic<bool> forGood{false};
std::atomic<bool> failed{false};
std::atomic<std::size_t> sizes[16];

void* Allocate(std::size_t size) noexcept {
  const long n = ++seen;
  if (n <= 16) sizes[n - 1] = size;
  if (n == failing || (forGood && n > failing)) {
    failed = true;
    return nullptr;
  }
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory != nullptr) ++live;
  return memory;
}

}  // namespace

// The array forms and the sized ones of the standard library come here.
void* operator new(std::size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }

void operator delete(void* memory) noexcept {
  if (memory == nullptr) return;
  --live;
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept { operator delete(memory); }

namespace proof {

void FailAllocation(long n) {
  seen = 0;
  failed = false;
  failing = n;
}

void FailAllocationsFrom(long n) {
  FailAllocation(n);
  forGood = true;
}

bool StopFailing() {
  forGood = false;
  failing = 0;
  return failed;
}

long LiveAllocations() { return live; }

std::size_t AllocationSize(long n) { return sizes[n - 1]; }

}  // namespace proof
