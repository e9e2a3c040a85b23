// Host functions that leave the conversion by an exception.
#include "fuzz/harness.h"

static bool traced = false;

void pvex_print_backtrace(void) { traced = true; }

int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message) {
  if (!traced) proof::Require("a fault without a backtrace");
  traced = false;
  throw proof::Fault{severity, function, file, line, message};
}
