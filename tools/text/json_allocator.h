// Memory for the JSON library.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

namespace zorl2_inspect {

// Throws std::bad_alloc, unlike the library's own allocator.
class JsonAllocator {
 public:
  static const bool kNeedFree = true;

  static void* Malloc(std::size_t size) { return size == 0 ? nullptr : ::operator new(size); }
  static void* Realloc(void* old, std::size_t old_size, std::size_t size) {
    void* const grown = Malloc(size);
    if (grown != nullptr && old != nullptr) std::memcpy(grown, old, std::min(old_size, size));
    Free(old);
    return grown;
  }
  static void Free(void* memory) { ::operator delete(memory); }
};

}  // namespace zorl2_inspect
