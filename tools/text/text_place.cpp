#include "tools/text/text_place.h"

#include <algorithm>

namespace zorl2_inspect {

TextPlace PlaceAt(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, std::min(offset, text.size()));
  const std::size_t newline = before.rfind('\n');
  const std::string_view line =
      newline == std::string_view::npos ? before : before.substr(newline + 1);
  const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; };
  const auto lines = std::count(before.begin(), before.end(), '\n');
  const auto extra = std::count_if(line.begin(), line.end(), continues);
  return {static_cast<std::size_t>(lines) + 1, line.size() - static_cast<std::size_t>(extra) + 1};
}

}  // namespace zorl2_inspect
