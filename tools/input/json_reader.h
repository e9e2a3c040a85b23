// Reads messages from JSON.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "tools/input/json_problem.h"

namespace zorl2_inspect {

enum class JsonExtent {
  kAll,    // All messages: the elements of an array, or objects one after the other.
  kFirst,  // The first message.
};

// Reads messages of the type and adds them to `messages`, also those before a problem. Accepts JSON
// only: no comments, no unquoted names, no name twice, no unknown names. Names are those of the
// schema or their lower camel case. A number may be in quotes, null is an absent field, an
// identifier may be "0.0.0.7", and a text may be {"hex": "67 65 ff"}. Required fields may be
// missing.
std::optional<JsonProblem> ReadJson(
    std::string_view text, const google::protobuf::Descriptor& type, JsonExtent extent,
    std::vector<std::unique_ptr<google::protobuf::Message>>* messages);

// Returns where the object at the path ends, in the message with this index. The text must have no
// problem.
std::size_t EndOfObject(std::string_view text, const google::protobuf::Descriptor& type,
                        std::size_t message, std::string_view path);

}  // namespace zorl2_inspect
