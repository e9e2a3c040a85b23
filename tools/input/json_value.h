// Sets fields of messages to the values of a JSON text.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <string>
#include <string_view>

namespace zorl2_inspect {

// A value that is neither object nor array.
struct JsonValue {
  enum class Kind { kNull, kBool, kNumber, kText };

  Kind kind;
  std::string_view text;  // "true"; the digits of a number; a text without quotes and escapes.
};

// The field with this name in the schema or in lower camel case; null if there is none.
const google::protobuf::FieldDescriptor* FieldNamed(const google::protobuf::Descriptor& type,
                                                    std::string_view name);

// "a field of TypeInfo: interfaceType, interfaceFlags, vlanType"
std::string ExpectedField(const google::protobuf::Descriptor& type);

// What a field that is no message accepts: "true or false", "one of UP, DOWN".
std::string ExpectedValue(const google::protobuf::FieldDescriptor& field);

// Sets the field, or adds a value to a repeated one. Of messages, only an identifier has such a
// value: "0.0.0.7". Returns false if the value does not fit.
bool StoreValue(const JsonValue& value, const google::protobuf::FieldDescriptor& field,
                google::protobuf::Message& message);

}  // namespace zorl2_inspect
