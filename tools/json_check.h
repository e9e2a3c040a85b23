// Finds the place in a JSON text that keeps it from being a message. The runtime's own parser
// decides whether a text is a message; this one says where the trouble is when it is not.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

struct JsonProblem {
  std::size_t offset;
  // The field path, such as zorid.value[2]; empty for the message itself.
  std::string path;
  std::string expected;
  std::string found;
};

// The first problem of one value as a message of the type; nothing when there is none, or none
// that this check knows.
std::optional<JsonProblem> FindJsonProblem(std::string_view value,
                                           const google::protobuf::Descriptor& type);

// The values of a text that holds several: the elements of an array, or values one after the other
// with nothing but space between them. What is returned points into the text.
std::optional<JsonProblem> SplitJson(std::string_view text, std::vector<std::string_view>* values);

}  // namespace zorl2_inspect
