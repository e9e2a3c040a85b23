// The elements that a message lists, such as the entries of a list or the states of a signal.
#pragma once

#include <google/protobuf/descriptor.h>

namespace zorl2_inspect {

// The field that identifies a message as one element among others; null if it has none.
const google::protobuf::FieldDescriptor* IdentifierOf(const google::protobuf::Descriptor& type);

// The list of identified elements that a message is about; null if it has none.
const google::protobuf::FieldDescriptor* ListOf(const google::protobuf::Descriptor& type);

}  // namespace zorl2_inspect
