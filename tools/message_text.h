// Messages written as JSON or in the protobuf text format.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/type_guess.h"

namespace zorl2_inspect {

// The text without a byte order mark.
std::string_view WithoutMark(std::string_view text);

// JSON begins with a brace or a bracket, the text format never does.
bool LooksLikeJson(std::string_view text);

struct MessageText {
  // In errors.
  std::string file;
  std::string_view text;
  // Otherwise the protobuf text format.
  bool json;
};

// The type that takes the text, or else the one that gets furthest into it. Throws InputError for
// a text that is broken before it comes to a field.
TypeGuess GuessTypeOfText(const MessageText& input);

// Both throw InputError with line, column, field path, what was expected and what stood there, also
// for a required field that is missing.
//
// The one message of the text.
std::unique_ptr<google::protobuf::Message> ReadMessage(const MessageText& input,
                                                       const google::protobuf::Descriptor& type);
// All messages of the text: JSON may hold several, in an array or one after the other.
std::vector<std::unique_ptr<google::protobuf::Message>> ReadMessages(
    const MessageText& input, const google::protobuf::Descriptor& type);

}  // namespace zorl2_inspect
