// Values for fields that only have to be present.
#pragma once

#include <google/protobuf/message.h>

namespace zorl2_inspect {

// Sets a singular field, or adds an element to a repeated one: the first value of an enumeration,
// zero, an empty text, a message without fields.
void AddAnyValue(google::protobuf::Message& message,
                 const google::protobuf::FieldDescriptor& field);

}  // namespace zorl2_inspect
