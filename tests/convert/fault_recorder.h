// Host functions that write the library's report to standard error.
#pragma once

#include <string>

namespace zorl2_test {

// The whole standard error of a process that the fault path terminates: the backtrace before the
// fault, the five arguments, then the handlers and destructors that only exit() runs.
std::string FaultReport(int line);

// Call this immediately before the fault, in the process that terminates.
void ExpectFault();

}  // namespace zorl2_test
