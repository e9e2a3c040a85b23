// What the conversions do with unusual values of a field.
#pragma once

#include <google/protobuf/descriptor.h>

#include <string>

namespace zorl2_inspect {

// Returns a text such as "absent -> 0; 4294967295 -> 65535". Asks zorl2::check about messages with
// such values. Returns an empty text if no message with a native record contains the field, or if
// nothing changes.
std::string FieldEffects(const google::protobuf::FieldDescriptor& field);

}  // namespace zorl2_inspect
