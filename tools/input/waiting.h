// Waiting for more of a stream that still grows.
#pragma once

#include <chrono>

namespace zorl2_inspect {

// Waits up to `time` until a read would not block. Returns false if it would, and after a signal.
bool HasInput(int descriptor, std::chrono::milliseconds time);

// Whether there may be more after the end: only a regular file grows; a pipe ends with its writers.
bool CanGrow(int descriptor);

// Waits, or until a signal.
void Pause(std::chrono::milliseconds time);

// From now on, the first SIGINT or SIGTERM only ends the wait; a second one terminates the process.
// Interrupted() is always false before this call.
void CatchInterrupts();
bool Interrupted();

}  // namespace zorl2_inspect
