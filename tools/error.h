// How the tool reports what it cannot do: one line on standard error, exit status 2.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace zorl2_inspect {

inline constexpr int kExitOk = 0;
inline constexpr int kExitDifferent = 1;
inline constexpr int kExitError = 2;

// The line itself: the file, where in it (an offset, a line and column, a field path; may be
// empty), and what is wrong: what was expected and what stood there.
class InputError : public std::runtime_error {
 public:
  InputError(std::string_view file, std::string_view where, std::string_view problem);
};

// Prints the line to standard error, behind the name of the program. Line breaks and other control
// characters become escapes, so that it stays one line.
void PrintError(std::string_view line);

// The same for what is worth knowing and no error.
void PrintNote(std::string_view line);

}  // namespace zorl2_inspect
