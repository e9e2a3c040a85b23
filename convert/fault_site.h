// Not installed. Ends the process where a state signal's identifier cannot be converted.
#pragma once

#include <cstdlib>

#include "native/pvex_fault.h"

namespace zorl2_mapping {

// A state applied to the wrong interface is worse than a restart, so a malformed identifier ends
// the process. The message is an empty text in a buffer of the size that the framework expects.
[[noreturn]] inline void EndProcess(const char* function, const char* file, int line) {
  pvex_print_backtrace();
  char message[350] = {};
  pvex_gen_fault(1, function, file, line, message);
  std::exit(1);
}

}  // namespace zorl2_mapping

// Fault reports are told apart by their line, so each site stays on its own.
#define FAULT_AT(line)                                        \
  static_assert(__LINE__ == (line), "this fault site moved"); \
  zorl2_mapping::EndProcess(__func__, __FILE__, __LINE__)
