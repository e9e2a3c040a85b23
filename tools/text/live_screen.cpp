#include "tools/text/live_screen.h"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace zorl2_inspect {
namespace {

constexpr const char* kClear = "\x1b[H\x1b[2J";
constexpr auto kRefresh = std::chrono::milliseconds(500);

}  // namespace

LiveScreen::LiveScreen(bool wanted) : on_(wanted && isatty(STDOUT_FILENO) == 1) {}

void LiveScreen::Refresh(std::uint64_t records, const std::function<void(Output&)>& print) {
  if (!on_ || records == shown_) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < next_) return;
  next_ = now + kRefresh;
  shown_ = records;
  std::string text = kClear;
  Output screen(&text);
  print(screen);
  screen.Finish();
  std::fwrite(text.data(), 1, text.size(), stdout);
  std::fflush(stdout);
}

void LiveScreen::Clear() const {
  if (on_) std::fputs(kClear, stdout);
}

}  // namespace zorl2_inspect
