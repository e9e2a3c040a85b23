// Messages written as JSON or in the protobuf text format.
#pragma once

#include <google/protobuf/message.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zorl2_inspect {

struct MessageText {
  // In errors: the name of the file, and its content.
  std::string name;
  std::string_view text;
};

// JSON begins with a brace or a bracket, the text format never does.
bool LooksLikeJson(std::string_view text);

struct TextTypeGuess {
  // Null when several types take the text, or none has a field that it begins with.
  const google::protobuf::Descriptor* type = nullptr;
  std::string reason;
};

// The type that takes the text, or else the one that gets furthest into it.
TextTypeGuess GuessTypeOfText(const MessageText& input, bool json);

// All messages of the text: JSON may hold several, in an array or one after the other. Each is
// complete. Throws InputError with line, column, field path, what was expected and what stood
// there.
std::vector<std::unique_ptr<google::protobuf::Message>> ReadMessages(
    const MessageText& input, bool json, const google::protobuf::Descriptor& type);

}  // namespace zorl2_inspect
