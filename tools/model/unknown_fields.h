// The unknown fields of messages.
#pragma once

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tools/model/field_text.h"

namespace zorl2_inspect {

struct UnknownValue {
  std::string path;       // Such as "typeInfo.#9".
  std::string wire_type;  // Such as "varint".
  std::string value;
  std::string known_as;  // The name of the schema's field with this number, if there is one.
};

// The first `most` of the message and all messages in it.
std::vector<UnknownValue> UnknownValues(const google::protobuf::Message& message, std::size_t most);

// How many there are.
std::size_t CountUnknown(const google::protobuf::Message& message);

// The value of an unknown field.
std::string UnknownText(const google::protobuf::UnknownField& field,
                        std::size_t limit = kShortText);

}  // namespace zorl2_inspect
