// A report on the terminal that is refreshed while its stream grows.
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

  // Replaces the screen by what `print` writes, if the report is of another number of records than
  // the last one and that has been there for half a second.
  void Refresh(std::uint64_t records, const std::function<void(Output&)>& print);

  // Clears the screen if it is on.
  void Clear() const;

 private:
  bool on_;
  std::uint64_t shown_ = 0;
  std::chrono::steady_clock::time_point next_;
};

}  // namespace zorl2_inspect
