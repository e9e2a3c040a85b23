// Bytes written as hexadecimal text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zorl2_inspect {

struct HexError {
  int line = 0;
  int column = 0;
  std::string problem;
};

// The bytes that the text stands for. Digits in pairs with or without blanks, colons or commas
// between them, "0x" before any group; or lines that begin with an offset, as hexdump -C, xxd and
// tshark -x print them: the column of characters at the end is left out, a line of "*" repeats the
// line before it up to the next offset, and offsets must fit. Blank lines and lines that begin with
// "#" are skipped. Nothing when the text is not hexadecimal; *error then says where and why.
std::optional<std::string> DecodeHex(std::string_view text, HexError* error);

}  // namespace zorl2_inspect
