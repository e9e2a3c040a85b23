#include "tools/text/colours.h"

#include <unistd.h>

#include <cstdlib>

namespace zorl2_inspect {

bool UseColours(const std::string& when, int descriptor) {
  if (when == "always") return true;
  if (when == "never") return false;
  const char* const no_color = std::getenv("NO_COLOR");
  if (no_color != nullptr && *no_color != '\0') return false;
  const char* const terminal = std::getenv("TERM");
  if (terminal == nullptr || std::string_view(terminal) == "dumb") return false;
  return isatty(descriptor) == 1;
}

std::string Palette::operator()(Colour colour, std::string_view text) const {
  static const char* const kCodes[] = {"", "2", "1", "31", "32", "33", "34", "35", "36"};
  if (!on_ || colour == Colour::kPlain || text.empty()) return std::string(text);
  std::string out = "\x1b[";
  out += kCodes[static_cast<int>(colour)];
  out += 'm';
  out += text;
  out += "\x1b[0m";
  return out;
}

}  // namespace zorl2_inspect
