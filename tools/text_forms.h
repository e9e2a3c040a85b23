// The two forms of a message that a person writes: JSON and the protobuf text format.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <string>
#include <string_view>

#include "tools/type_guess.h"

namespace zorl2_inspect {

// The message in the wire format. Required fields may be missing. Throws InputError with the name
// of the file, the line and the column.
std::string WireFromJson(std::string_view text, const google::protobuf::Descriptor& type,
                         std::string_view file);
std::string WireFromText(std::string_view text, const google::protobuf::Descriptor& type,
                         std::string_view file);

TypeGuess GuessFromJson(std::string_view text, std::string_view file);
TypeGuess GuessFromText(std::string_view text, std::string_view file);

// What the two forms leave out: unknown fields in JSON. Names as in the schema, every field of a
// message that is present, octets that are no UTF-8 shown as U+FFFD.
std::string ToJson(const google::protobuf::Message& message, bool pretty = true);
std::string ToText(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
