#include "tools/input/waiting.h"

#include <poll.h>
#include <sys/stat.h>

#include <csignal>

namespace zorl2_inspect {
namespace {

// A signal handler can only reach a global variable.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
volatile std::sig_atomic_t interrupted = 0;

extern "C" void TakeInterrupt(int) { interrupted = 1; }

}  // namespace

bool HasInput(int descriptor, std::chrono::milliseconds time) {
  pollfd state{descriptor, POLLIN, 0};
  return poll(&state, 1, static_cast<int>(time.count())) > 0;
}

bool CanGrow(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

void Pause(std::chrono::milliseconds time) { poll(nullptr, 0, static_cast<int>(time.count())); }

void CatchInterrupts() {
  struct sigaction action {};
  action.sa_handler = TakeInterrupt;
  // Without SA_RESTART a waiting read returns.
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGINT, &action, nullptr);
  sigaction(SIGTERM, &action, nullptr);
}

bool Interrupted() { return interrupted != 0; }

}  // namespace zorl2_inspect
