// Fault reporting on standard error, for programs without a host framework.
#include "native/pvex_fault.h"

#include <boost/stacktrace.hpp>
#include <cstdio>
#include <string>

void pvex_print_backtrace(void) {
  // Skips the frame of this function.
  const std::string frames = to_string(boost::stacktrace::stacktrace(1, 64));
  std::fprintf(stderr, "backtrace:\n%s", frames.c_str());
}

int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message) {
  std::fprintf(stderr, "fault: severity %d in %s at %s:%d%s%s\n", severity, function, file, line,
               *message == '\0' ? "" : ": ", message);
  return 0;
}
