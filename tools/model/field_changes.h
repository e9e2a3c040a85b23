// What differs between two messages of one type, field by field.
#pragma once

#include <google/protobuf/message.h>

#include <string>
#include <vector>

namespace zorl2_inspect {

struct FieldChange {
  enum class Kind { kAdded, kRemoved, kChanged };
  Kind kind;
  // Such as blockInfo[STP].state; an unknown field is #number.
  std::string path;
  // As text. An added value has no old value, a removed value no new one.
  std::string old_value;
  std::string new_value;
};

// Compares with the runtime's MessageDifferencer, including unknown fields and presence. Compares
// the protocols of an entry as a set and its block entries by protocol, in any order; an identifier
// is one value. Ignores the field `without`, if there is one.
std::vector<FieldChange> CompareFields(const google::protobuf::Message& before,
                                       const google::protobuf::Message& after,
                                       const google::protobuf::FieldDescriptor* without = nullptr);

}  // namespace zorl2_inspect
