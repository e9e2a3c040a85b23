/// \file
/// The fault reporting of the host framework. The library calls these two functions and does not
/// define them: a process defines both before it loads the library. A program without a host
/// framework links zorl2::host.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/// Reports the stack of the calling thread. The library calls it once, before pvex_gen_fault.
void pvex_print_backtrace(void);

/// Reports a fault. `severity` is always 1. `function` and `file` name the place, `file` relative
/// to the root of the sources; `line` is the number of the fault site. `message` may be empty. The
/// texts are valid during the call only. The library ignores the result and calls exit(1)
/// afterwards.
int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message);

#ifdef __cplusplus
}
#endif
