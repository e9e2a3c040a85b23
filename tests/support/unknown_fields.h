// The numbers that a message keeps in its unknown fields, for matchers.
#pragma once

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

#include <cstdint>
#include <utility>
#include <vector>

namespace zorl2_test {

// Field number and value of every unknown varint, in order.
inline std::vector<std::pair<int, std::uint64_t>> UnknownVarints(
    const google::protobuf::Message& message) {
  const google::protobuf::UnknownFieldSet& fields =
      message.GetReflection()->GetUnknownFields(message);
  std::vector<std::pair<int, std::uint64_t>> varints;
  for (int i = 0; i < fields.field_count(); ++i) {
    if (fields.field(i).type() != google::protobuf::UnknownField::TYPE_VARINT) continue;
    varints.emplace_back(fields.field(i).number(), fields.field(i).varint());
  }
  return varints;
}

}  // namespace zorl2_test
