// Bytes of a capture as text that is safe to print.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorl2_inspect {

inline constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

// In double quotes. Escapes quotes, control characters, marks that change the direction of text,
// and bytes that are not UTF-8. A text that is longer than the limit is cut, and its length
// follows.
std::string Quoted(std::string_view text, std::size_t limit = kNoLimit);

// The text itself if it needs no quotes and has no blank.
std::string QuotedUnlessPlain(std::string_view text, std::size_t limit = kNoLimit);

// Whether the whole text is UTF-8.
bool IsUtf8(std::string_view text);

// Two digits for each byte, separated by blanks.
std::string Hex(std::string_view bytes);

}  // namespace zorl2_inspect
