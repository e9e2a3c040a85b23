// Colours.
#pragma once

#include <string>
#include <string_view>

namespace zorl2_inspect {

enum class Colour { kPlain, kFaint, kBold, kRed, kGreen, kYellow, kBlue, kMagenta, kCyan };

// Whether to use colours. "auto" uses them on a terminal that can show them, unless the environment
// has a NO_COLOR that is not empty.
bool UseColours(const std::string& when, int descriptor);

// The escape sequences around the text; the text itself if colours are off.
class Palette {
 public:
  explicit Palette(bool on) : on_(on) {}
  bool on() const { return on_; }
  std::string operator()(Colour colour, std::string_view text) const;

 private:
  bool on_;
};

}  // namespace zorl2_inspect
