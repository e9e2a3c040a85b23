// Replaces every form of operator new and delete, in the library as well, with one that notes what
// is asked for and fails on demand: include it in exactly one source file of an executable. New
// memory is filled with a pattern, so that what nobody wrote shows.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <vector>

namespace zorl2_test {

constexpr unsigned char kPattern = 0xA5;
constexpr long kUnlimited = std::numeric_limits<long>::max();

struct WatchedMemory {
  struct Event {
    const char* form;
    std::size_t size;
    void* memory;
  };
  static constexpr int kKept = 64;

  bool watching = false;
  long granted = kUnlimited;
  // What the watched code has allocated and not released.
  long live = 0;
  // Only the first are kept; the place for them is not allocated.
  int events = 0;
  Event kept[kKept];
  // When set, asked before malloc; it may end the process.
  void* (*hook)(const Event& event) = nullptr;

  void Note(const Event& event) {
    if (events < kKept) kept[events] = event;
    ++events;
  }
};

inline WatchedMemory watched;

// Watches while it lives. At most so many allocations are granted, and every later one fails.
class Watch {
 public:
  explicit Watch(long granted = kUnlimited) {
    watched = WatchedMemory();
    watched.granted = granted;
    watched.watching = true;
  }
  ~Watch() { watched.watching = false; }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
};

// What was asked for and released since the last watch began, in order: "new 16", "delete".
inline std::vector<std::string> Events() {
  std::vector<std::string> texts;
  for (int i = 0; i < watched.events && i < WatchedMemory::kKept; ++i) {
    texts.emplace_back(watched.kept[i].form);
    if (watched.kept[i].size != 0) texts.back() += ' ' + std::to_string(watched.kept[i].size);
  }
  return texts;
}

inline void* Allocate(const char* form, std::size_t size) {
  if (watched.watching) {
    WatchedMemory::Event event = {form, size, nullptr};
    if (watched.granted-- <= 0) return nullptr;
    if (watched.hook != nullptr) event.memory = watched.hook(event);
    if (event.memory == nullptr) event.memory = std::malloc(size == 0 ? 1 : size);
    if (event.memory == nullptr) return nullptr;
    ++watched.live;
    watched.Note(event);
    // A mapping larger than any machine's memory stays as it is.
    if (size < (std::size_t{1} << 32)) std::memset(event.memory, kPattern, size);
    return event.memory;
  }
  return std::malloc(size == 0 ? 1 : size);
}

inline void* AllocateOrThrow(const char* form, std::size_t size) {
  void* memory = Allocate(form, size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

inline void Release(const char* form, void* memory) noexcept {
  if (watched.watching && memory != nullptr) {
    --watched.live;
    watched.Note({form, 0, memory});
  }
  std::free(memory);
}

}  // namespace zorl2_test

void* operator new(std::size_t size) { return zorl2_test::AllocateOrThrow("new", size); }
void* operator new[](std::size_t size) { return zorl2_test::AllocateOrThrow("new[]", size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return zorl2_test::Allocate("new nothrow", size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return zorl2_test::Allocate("new[] nothrow", size);
}
void operator delete(void* memory) noexcept { zorl2_test::Release("delete", memory); }
void operator delete[](void* memory) noexcept { zorl2_test::Release("delete[]", memory); }
void operator delete(void* memory, std::size_t) noexcept { zorl2_test::Release("delete", memory); }
void operator delete[](void* memory, std::size_t) noexcept {
  zorl2_test::Release("delete[]", memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
  zorl2_test::Release("delete", memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
  zorl2_test::Release("delete[]", memory);
}

// Nothing here is aligned beyond the ordinary; the default aligned forms do not reach the above.
