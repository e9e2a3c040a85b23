// The characters that a terminal interprets or does not show.
#pragma once

#include <cstddef>
#include <string_view>

namespace zorl2_inspect {

// How many bytes of the text, which is not empty, are its first character; 0 if the text begins
// with a byte that is not UTF-8, a control character, a mark that changes the direction of text, or
// a character without a shape of its own.
std::size_t SafeCharacter(std::string_view text);

}  // namespace zorl2_inspect
