// Messages written as JSON or in the protobuf text format.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/input/hex_text.h"
#include "tools/input/type_inference.h"
#include "tools/text/error.h"

namespace zorl2_inspect {

// JSON begins with a brace or a bracket, the text format never does.
bool LooksLikeJson(std::string_view text);

struct MessageText {
  std::string file;  // In errors.
  std::string_view text;
  bool json;  // Otherwise the protobuf text format.
};

// The type that accepts the text, or else the one that accepts the longest part of it. Throws Error
// for a text that is broken before its first field.
InferredType InferTypeOfText(const MessageText& input);

// Both functions throw Error with line, column and field path, also if a required field is missing.
//
// Reads the one message of the text. If `missing` is not null, it receives the problem of a missing
// required field, and the function does not throw for it.
std::unique_ptr<google::protobuf::Message> ReadMessage(const MessageText& input,
                                                       const google::protobuf::Descriptor& type,
                                                       std::optional<Problem>* missing = nullptr);
// Reads all messages of the text. JSON may contain several, in an array or one after the other.
std::vector<std::unique_ptr<google::protobuf::Message>> ReadMessages(
    const MessageText& input, const google::protobuf::Descriptor& type);

}  // namespace zorl2_inspect
