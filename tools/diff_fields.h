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
  // As a person reads them. What was added has no old value, what was removed no new one.
  std::string old_value;
  std::string new_value;
};

// Compares with the runtime's MessageDifferencer, unknown fields and presence included. The
// protocols of an entry are compared as a set and its block entries by protocol, whatever their
// order; an identifier is one value. The field named without, if any, is left out on both sides.
std::vector<FieldChange> CompareFields(const google::protobuf::Message& before,
                                       const google::protobuf::Message& after,
                                       const google::protobuf::FieldDescriptor* without = nullptr);

// An identifier as 0.0.0.7; one of another size as its values and their count.
std::string IdentifierText(const google::protobuf::Message& zorid);

}  // namespace zorl2_inspect
