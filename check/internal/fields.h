// Not installed. The fields of a message of any class, singular and repeated ones alike.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <string>

namespace zorl2::check::internal {

// How many values a field has; a singular one has none or one.
int CountOf(const google::protobuf::Message& message,
            const google::protobuf::FieldDescriptor& field);

// The message in a field of messages; the index of a singular one is 0.
const google::protobuf::Message& MessageAt(const google::protobuf::Message& message,
                                           const google::protobuf::FieldDescriptor& field,
                                           int index);

// "intfs[3]"; "zorid" for a singular field, and "intfs" for kWholeField.
constexpr int kWholeField = -1;
std::string ElementPath(const google::protobuf::FieldDescriptor& field, int index);

}  // namespace zorl2::check::internal
