// Text in lines of a limited width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

// The text in lines of at most `first` characters and then of at most `rest`, broken at blanks
// where there are any. Both are at least 1.
std::vector<std::string> Wrap(std::string_view text, std::size_t first, std::size_t rest);

// The number of columns of the terminal on this descriptor; 0 if it is none.
std::size_t TerminalWidth(int descriptor);

}  // namespace zorl2_inspect
