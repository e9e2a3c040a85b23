// The two forms of a message that a person reads and writes: JSON and the protobuf text format.
#pragma once

#include <google/protobuf/message.h>

#include <string>

namespace zorl2_inspect {

// What the two forms leave out: unknown fields in JSON. Names as in the schema, every field of a
// message that is present, octets that are no UTF-8 shown as U+FFFD.
std::string ToJson(const google::protobuf::Message& message, bool pretty = true);
std::string ToText(const google::protobuf::Message& message);

}  // namespace zorl2_inspect
