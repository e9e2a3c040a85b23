// Waiting for more of a stream that still grows.
#pragma once

#include <chrono>

namespace zorl2_inspect {

// Whether a read returns at once, now or within the time. Also false after a signal.
bool HasInput(int descriptor, std::chrono::milliseconds time);

// Whether there may be more after the end: only a regular file grows; a pipe ends with its writers.
bool CanGrow(int descriptor);

// Waits, or until a signal.
void Pause(std::chrono::milliseconds time);

// From now on, SIGINT and SIGTERM only end the wait, once; a second one ends the process. The
// caller must have called this before Interrupted() can be true.
void CatchInterrupts();
bool Interrupted();

}  // namespace zorl2_inspect
