// Bytes of a capture as text that is safe to print.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorl2_inspect {

inline constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

// Writes the text in double quotes. Escapes quotes, backslashes, bytes that are not UTF-8, and
// every character that SafeCharacter() rejects, so that the text format of protobuf accepts the
// result. Cuts a text that is longer than the limit and appends its length.
std::string Quoted(std::string_view text, std::size_t limit = kNoLimit);

// Escapes the same without adding quotes, for a file name or a complete line. Leaves quotes and
// backslashes.
std::string Printable(std::string_view text);

// Returns the text itself if it has nothing to escape and no blank, otherwise the quoted text.
std::string QuotedUnlessPlain(std::string_view text, std::size_t limit = kNoLimit);

// Whether the whole text is UTF-8.
bool IsUtf8(std::string_view text);

// Two digits for each byte, separated by blanks.
std::string Hex(std::string_view bytes);

}  // namespace zorl2_inspect
