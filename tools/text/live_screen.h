// Refreshes a report on the terminal while its stream grows.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

#include "tools/text/output.h"

namespace zorl2_inspect {

class LiveScreen {
 public:
  // Off unless wanted and standard output is a terminal.
  explicit LiveScreen(bool wanted);
  bool on() const { return on_; }

  // Clears the screen and prints the report, if the number of records has changed and the last
  // report is at least half a second old.
  void Refresh(std::uint64_t records, const std::function<void(Output&)>& print);

  // Clears the screen if it is on.
  void Clear() const;

 private:
  bool on_;
  std::uint64_t shown_ = 0;
  std::chrono::steady_clock::time_point next_;
};

}  // namespace zorl2_inspect
