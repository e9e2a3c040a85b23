// Bytes of a capture as text that is safe to print.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorl2_inspect {

inline constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);

// In double quotes. Escapes quotes, backslashes, bytes that are not UTF-8, and every character that
// SafeCharacter() rejects, so that the text format of protobuf accepts the result. A text that is
// longer than the limit is cut, and its length follows.
std::string Quoted(std::string_view text, std::size_t limit = kNoLimit);

// Without quotes: a name of a file, or a line that is already complete. Leaves quotes and
// backslashes.
std::string Printable(std::string_view text);

// The text itself if it needs no quotes and has no blank.
std::string QuotedUnlessPlain(std::string_view text, std::size_t limit = kNoLimit);

// Whether the whole text is UTF-8.
bool IsUtf8(std::string_view text);

// Two digits for each byte, separated by blanks.
std::string Hex(std::string_view bytes);

}  // namespace zorl2_inspect
