#include "tools/text/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace zorl2_inspect {
namespace {

constexpr std::uint64_t kStep = 1 << 20;
constexpr int kWidth = 30;
constexpr auto kPatience = std::chrono::seconds(1);
constexpr auto kPause = std::chrono::milliseconds(100);

}  // namespace

Progress::Progress(std::uint64_t total_bytes)
    : total_bytes_(total_bytes),
      terminal_(isatty(STDERR_FILENO) == 1),
      start_(Clock::now()),
      next_look_(start_ + kPatience) {}

double Progress::Seconds() const {
  return std::chrono::duration<double>(Clock::now() - start_).count();
}

void Progress::Look(std::uint64_t bytes, std::uint64_t records) {
  next_bytes_ = bytes + kStep;
  if (!terminal_) {
    next_bytes_ = static_cast<std::uint64_t>(-1);
    return;
  }
  const Clock::time_point now = Clock::now();
  if (now < next_look_) return;
  next_look_ = now + kPause;
  drawn_ = true;
  const double share =
      total_bytes_ == 0 ? 0 : static_cast<double>(bytes) / static_cast<double>(total_bytes_);
  const std::string line = Line(std::min(share, 1.0), records, Seconds());
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
}

std::string Progress::Line(double share, std::uint64_t records, double seconds) const {
  const double rate = static_cast<double>(records) / seconds;
  const std::string counted = fmt::format("{} records  {:.0f}/s", records, rate);
  if (total_bytes_ == 0) return fmt::format("\r\x1b[K{}  {:.0f} s", counted, seconds);
  const int done = static_cast<int>(share * kWidth);
  const double left = share > 0 ? seconds / share - seconds : 0;
  return fmt::format("\r\x1b[K[{:#<{}}{:.<{}}] {:3.0f} %  {}  {:.0f} s left", "", done, "",
                     kWidth - done, share * 100, counted, left);
}

void Progress::Finish() {
  if (!drawn_) return;
  drawn_ = false;
  std::fputs("\r\x1b[K", stderr);
  std::fflush(stderr);
}

}  // namespace zorl2_inspect
