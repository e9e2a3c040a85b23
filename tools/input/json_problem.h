// Problems of JSON texts.
#pragma once

#include <rapidjson/error/error.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zorl2_inspect {

// What is wrong with a JSON text, and where.
struct JsonProblem {
  std::size_t offset = 0;
  std::string path;  // Of the field.
  std::string found;
  std::string expected;
};

// The token at the offset: a quoted text, or "the end of the text".
std::string TokenAt(std::string_view text, std::size_t offset);

// The problem for which the library stops.
JsonProblem SyntaxProblem(std::string_view text, std::size_t offset,
                          rapidjson::ParseErrorCode code);

}  // namespace zorl2_inspect
