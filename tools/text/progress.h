// A progress bar for work that takes long.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace zorl2_inspect {

// Draws one line on standard error if that is a terminal and the work has taken more than a second.
// Removes the line at the end.
class Progress {
 public:
  // The total is in bytes; 0 if it is not known.
  explicit Progress(std::uint64_t total_bytes);
  ~Progress() { Finish(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  // Looks at the clock once per megabyte.
  void Update(std::uint64_t bytes, std::uint64_t records) {
    if (bytes >= next_bytes_) Look(bytes, records);
  }
  void Finish();

  double Seconds() const;

 private:
  using Clock = std::chrono::steady_clock;

  void Look(std::uint64_t bytes, std::uint64_t records);
  std::string Line(double share, std::uint64_t records, double seconds) const;

  std::uint64_t total_bytes_;
  bool terminal_;
  bool drawn_ = false;
  Clock::time_point start_;
  Clock::time_point next_look_;
  std::uint64_t next_bytes_ = 0;
};

}  // namespace zorl2_inspect
