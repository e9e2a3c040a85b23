#include "tests/convert/fault_recorder.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>

#include "native/pvex_fault.h"

#ifdef ZORL2_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace {

constexpr std::size_t kMessageSize = 350;
bool expecting = false;

// A static object like any other of the process: its destructor writes only at a regular exit.
struct Farewell {
  ~Farewell() {
    if (expecting) std::fputs("static destructor\n", stderr);
  }
} const farewell;

const char* Describe(const char* message) {
#ifdef ZORL2_ADDRESS_SANITIZER
  // The bytes after the buffer do not belong to it.
  if (__asan_region_is_poisoned(const_cast<char*>(message), kMessageSize) != nullptr) {
    return "a short buffer";
  }
  if (__asan_address_is_poisoned(message + kMessageSize) == 0) return "a long buffer";
#endif
  for (std::size_t i = 0; i < kMessageSize; ++i) {
    if (message[i] != '\0') return "other bytes";
  }
  return "350 zero bytes";
}

}  // namespace

void pvex_print_backtrace(void) { std::fputs("backtrace\n", stderr); }

int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message) {
  std::fprintf(stderr, "fault(%d, \"%s\", \"%s\", %d, %s)\n", severity, function, file, line,
               Describe(message));
  // The library ignores it.
  return 77;
}

namespace zorl2_test {

std::string FaultReport(int line) {
  return "backtrace\nfault(1, \"Convert\", \"convert/intf_state_converter.cpp\", " +
         std::to_string(line) + ", 350 zero bytes)\natexit handler\nstatic destructor\n";
}

void ExpectFault() {
  expecting = true;
  std::atexit([] { std::fputs("atexit handler\n", stderr); });
}

}  // namespace zorl2_test
