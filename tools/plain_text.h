// Bytes of a capture as text that is safe on a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorl2_inspect {

inline constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

// In double quotes; control characters, quotes and everything that is not UTF-8 are escaped, and
// what is longer than the limit is cut with a note of its length.
std::string Quoted(std::string_view text, std::size_t limit = kNoLimit);

// Two digits each, separated by blanks.
std::string Hex(std::string_view bytes);

}  // namespace zorl2_inspect
