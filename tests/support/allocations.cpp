#include "tests/support/allocations.h"

#include <malloc.h>

#include <cstdlib>
#include <cstring>

namespace zorl2_test {

AllocationState allocations;

namespace {

long granted = kUnlimited;
long failures = 0;
bool watching = false;
Watch::Hook hook = nullptr;
int events = 0;
Event kept[Watch::kKept];

// Static storage: noting an event allocates nothing.
void Note(const Event& event) {
  if (!watching) return;
  if (events < Watch::kKept) kept[events] = event;
  ++events;
}

std::size_t Footprint(void* memory) { return malloc_usable_size(memory) + sizeof(std::size_t); }

void* Allocate(const char* form, std::size_t size) noexcept {
  if (granted > 0) {
    if (granted != kUnlimited) --granted;
  } else if (failures > 0) {
    if (failures != kUnlimited) --failures;
    return nullptr;
  }
  Event event = {form, size, nullptr};
  if (watching && hook != nullptr) event.memory = hook(event);
  const bool own = event.memory == nullptr;
  if (own) event.memory = std::malloc(size == 0 ? 1 : size);
  if (event.memory == nullptr) return nullptr;
  ++allocations.made;
  ++allocations.live;
  if (own) {
    allocations.heap += Footprint(event.memory);
    if (allocations.heap > allocations.peak) allocations.peak = allocations.heap.load();
    if (watching) std::memset(event.memory, kPattern, size);
  }
  Note(event);
  return event.memory;
}

void* AllocateOrThrow(const char* form, std::size_t size) {
  void* memory = Allocate(form, size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Release(const char* form, void* memory) noexcept {
  if (memory == nullptr) return;
  --allocations.live;
  allocations.heap -= Footprint(memory);
  Note({form, 0, memory});
  std::free(memory);
}

}  // namespace

Failing::Failing(long grants, long fails) {
  granted = grants;
  failures = fails;
}
Failing::~Failing() {
  granted = kUnlimited;
  failures = 0;
}

Watch::Watch(Hook asked) {
  events = 0;
  hook = asked;
  watching = true;
}
Watch::~Watch() { watching = false; }

int EventCount() { return events; }

const Event& EventAt(int i) { return kept[i]; }

std::vector<std::string> Events() {
  std::vector<std::string> texts;
  for (int i = 0; i < events && i < Watch::kKept; ++i) {
    texts.emplace_back(kept[i].form);
    if (kept[i].size != 0) texts.back() += ' ' + std::to_string(kept[i].size);
  }
  return texts;
}

}  // namespace zorl2_test

using zorl2_test::AllocateOrThrow;
using zorl2_test::Release;

void* operator new(std::size_t size) { return AllocateOrThrow("new", size); }
void* operator new[](std::size_t size) { return AllocateOrThrow("new[]", size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return zorl2_test::Allocate("new nothrow", size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return zorl2_test::Allocate("new[] nothrow", size);
}
void operator delete(void* memory) noexcept { Release("delete", memory); }
void operator delete[](void* memory) noexcept { Release("delete[]", memory); }
void operator delete(void* memory, std::size_t) noexcept { Release("delete", memory); }
void operator delete[](void* memory, std::size_t) noexcept { Release("delete[]", memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Release("delete", memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  Release("delete[]", memory);
}
