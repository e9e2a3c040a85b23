#include "tools/text/wrap.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace zorl2_inspect {
namespace {

constexpr std::size_t kUsualWidth = 80;

// The number of bytes of so many characters.
std::size_t Bytes(std::string_view text, std::size_t characters) {
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    const bool begins = (static_cast<unsigned char>(text[at]) & 0xc0) != 0x80;
    if (begins && characters-- == 0) break;
  }
  return at;
}

}  // namespace

std::vector<std::string> Wrap(std::string_view text, std::size_t first, std::size_t rest) {
  std::vector<std::string> lines;
  std::size_t width = first;
  for (;;) {
    const std::size_t room = Bytes(text, width);
    if (room == text.size()) break;
    const std::size_t blank = text.rfind(' ', room);
    const bool breaks = blank != std::string_view::npos && blank > 0;
    lines.emplace_back(text.substr(0, breaks ? blank : room));
    text.remove_prefix(breaks ? blank + 1 : room);
    width = rest;
  }
  lines.emplace_back(text);
  return lines;
}

std::size_t TerminalWidth(int descriptor) {
  if (isatty(descriptor) != 1) return 0;
  winsize size{};
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsualWidth;
  return size.ws_col;
}

}  // namespace zorl2_inspect
