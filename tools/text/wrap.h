// Text in lines of a limited width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// Breaks the text into a line of at most `first` characters and lines of at most `rest`, at blanks
// where possible. Both are at least 1.
std::vector<std::string> Wrap(std::string_view text, std::size_t first, std::size_t rest);

// The number of columns of the terminal on this descriptor; 0 if it is none.
std::size_t TerminalWidth(int descriptor);

}  // namespace zorl2_inspect
