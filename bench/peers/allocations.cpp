// Counts malloc and its relatives instead of operator new, because some of the compared libraries
// call malloc. The functions below replace those of the C library in the whole process.
#include <cstddef>

#include "bench/peers/peer.h"

namespace {

thread_local std::uint64_t calls = 0;

}  // namespace

std::uint64_t zorl2_peers::AllocationsOfThisThread() noexcept { return calls; }

extern "C" {

void* __libc_malloc(std::size_t size) noexcept;
void* __libc_calloc(std::size_t count, std::size_t size) noexcept;
void* __libc_realloc(void* memory, std::size_t size) noexcept;

void* malloc(std::size_t size) noexcept {
  ++calls;
  return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  ++calls;
  return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) noexcept {
  ++calls;
  return __libc_realloc(memory, size);
}
}
