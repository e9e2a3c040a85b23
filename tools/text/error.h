// Errors: one line on standard error and exit status 2.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tools/text/text_place.h"

namespace zorl2_inspect {

inline constexpr int kExitOk = 0;
inline constexpr int kExitDifferent = 1;
inline constexpr int kExitError = 2;

// What is wrong and where. Everything but `found` may be absent.
struct Problem {
  std::uint64_t record = 0;             // The number of a stream's record, from 1.
  std::optional<std::uint64_t> offset;  // In the bytes of the input.
  std::optional<TextPlace> place;       // In the text of the input.
  std::string path;                     // Of the field.
  std::string found;
  std::string expected;
  std::string rule_name = {};  // Of zorl2::check, if one of them is broken.
};

// "record 3, offset 0x91f: zorid: found (expected expected) [rule]".
std::string ProblemText(const Problem& problem);

// The only exception for an input, an output or an argument that the tool rejects. Its text begins
// with the name of the file or argument; the problem follows.
class Error : public std::runtime_error {
 public:
  Error(std::string_view subject, const Problem& problem);
  Error(std::string_view subject, std::string found, std::string expected = {});
};

// Prints the line to standard error after the name of the program. Escapes the characters that a
// terminal interprets, so that it remains one line.
void PrintError(std::string_view line);

// Does the same for information that is not an error.
void PrintNote(std::string_view line);

}  // namespace zorl2_inspect
