/* Host functions that a process loads before the library. */
#include "native/pvex_fault.h"

void pvex_print_backtrace(void) {}

int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message) {
  (void)severity, (void)function, (void)file, (void)line, (void)message;
  return 0;
}
