// Fault reporting of the host framework. The library calls these two functions and does not define
// them: a process defines both before it loads the library. A program without a host framework links
// zorl2::host.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

// Reports where the calling thread stands. Called once, right before pvex_gen_fault.
void pvex_print_backtrace(void);

// Reports a fault: its severity (the library always passes 1), the name of the function, the path
// of its source file relative to the root of the sources, the line, and a message that may be
// empty. The texts are valid during the call only. The library ignores the result and ends the
// process with exit(1) when the call returns.
int pvex_gen_fault(int severity, const char* function, const char* file, int line,
                   const char* message);

#ifdef __cplusplus
}
#endif
