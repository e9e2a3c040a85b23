// What is wrong with a JSON text, and where.
#pragma once

#include <rapidjson/error/error.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zorl2_inspect {

struct JsonProblem {
  std::size_t offset = 0;
  std::string path;  // Of the field.
  std::string found;
  std::string expected;
};

// The token at the offset, for a person.
std::string JsonToken(std::string_view text, std::size_t offset);

// Why the library's reader stopped at the offset; without a path. `type` is the name of the message.
JsonProblem SyntaxProblem(std::string_view text, std::size_t offset, rapidjson::ParseErrorCode code,
                          const std::string& type);

}  // namespace zorl2_inspect
