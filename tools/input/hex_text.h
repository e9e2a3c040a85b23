// Bytes written as hexadecimal text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/text/error.h"

namespace zorl2_inspect {

// The text without a byte order mark.
std::string_view WithoutMark(std::string_view text);

// The bytes of the text. Accepts digits in pairs, with or without blanks, colons or commas between
// them and "0x" before any group; or lines that begin with an offset, as hexdump -C, xxd,
// od -Ax -tx1 and tshark -x print them. Of such lines it ignores the column of characters at the
// end; a line of "*" repeats the line before it up to the next offset, and offsets must fit. Skips
// blank lines and lines that begin with "#". Returns nothing if the text is not hexadecimal;
// *problem then has line and column.
std::optional<std::string> DecodeHex(std::string_view text, Problem* problem);

}  // namespace zorl2_inspect
