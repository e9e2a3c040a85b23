// Host functions that write the report of the library to standard error, for programs that link no
// others.
#pragma once

#include <string>

namespace zorl2_test {

// The whole standard error of a process that the fault path terminates: the backtrace before the
// fault, the five arguments, then the handlers and destructors that only exit() runs.
std::string FaultReport(int line);

// To be called immediately before the fault, in the process that terminates.
void ExpectFault();

}  // namespace zorl2_test
