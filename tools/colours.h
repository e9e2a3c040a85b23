// When and how the tool colours what it prints.
#pragma once

#include <string>
#include <string_view>

namespace zorl2_inspect {

enum class Colour { kPlain, kFaint, kBold, kRed, kGreen, kYellow, kBlue, kMagenta, kCyan };

// "always" and "never" mean what they say. "auto" means colours for a terminal that can show them,
// and none when the environment holds a NO_COLOR that is not empty.
bool UseColours(const std::string& when, int descriptor);

// The escape sequences around the text; the text itself when colours are off.
class Palette {
 public:
  explicit Palette(bool on) : on_(on) {}
  bool on() const { return on_; }
  std::string operator()(Colour colour, std::string_view text) const;

 private:
  bool on_;
};

}  // namespace zorl2_inspect
