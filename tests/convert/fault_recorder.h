// Host functions that write down what the library reports, for programs that link no others.
#pragma once

#include <string>

namespace zorl2_test {

// The whole standard error of a process that the fault path ends: the backtrace before the fault,
// the five arguments, then the handlers and destructors that only exit() runs.
std::string FaultReport(int line);

// To be called right before the fault, in the process that is to end.
void ExpectFault();

}  // namespace zorl2_test
