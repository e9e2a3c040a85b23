// Not installed. Terminates the process when a state signal's identifier cannot be converted.
#pragma once

#include <cstdlib>

#include "native/pvex_fault.h"

namespace zorl2_mapping {

// Hosts tell the fault reports apart by these numbers, so they are constants and not source lines.
enum class FaultSite : int {
  kShutToNative = 64,
  kShutToMessage = 80,
  kBlockToNative = 100,
  kBlockToMessage = 116,
};

// Reports the fault with an empty message and exits with status 1.
[[noreturn]] inline void TerminateProcess(FaultSite site) {
  pvex_print_backtrace();
  const char message[350] = {};
  pvex_gen_fault(1, "Convert", "convert/intf_state_converter.cpp", static_cast<int>(site), message);
  std::exit(1);
}

}  // namespace zorl2_mapping
