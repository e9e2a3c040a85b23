// The wire types.
#pragma once

#include <google/protobuf/descriptor.h>

#include <cstdint>

namespace zorl2_inspect {

enum WireType : int {
  kVarint = 0,
  kFixed64 = 1,
  kLength = 2,
  kStartGroup = 3,
  kEndGroup = 4,
  kFixed32 = 5,
};

// The wire type of the field in the schema.
int WireTypeOf(const google::protobuf::FieldDescriptor& field);

// Whether a varint is no listed value of the field's enumeration. False for a field that is no
// enumeration.
bool IsUnlisted(const google::protobuf::FieldDescriptor& field, std::uint64_t value);

// Such as "length-delimited".
const char* WireTypeName(int wire_type);

}  // namespace zorl2_inspect
