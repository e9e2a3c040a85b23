// What differs between two messages of one type, field by field.
#pragma once

#include <google/protobuf/message.h>
#include <google/protobuf/unknown_field_set.h>

#include <cstddef>
#include <string>
#include <vector>

namespace zorl2_inspect {

// A value of one of the two messages, which must remain valid.
struct ValueRef {
  // Both null for an absent value.
  const google::protobuf::Message* parent = nullptr;
  const google::protobuf::UnknownField* unknown = nullptr;
  // Of a value in `parent`; the index is -1 for a singular field.
  const google::protobuf::FieldDescriptor* field = nullptr;
  int index = -1;

  bool present() const { return parent != nullptr || unknown != nullptr; }
  // Whether the value is a text, or the bytes of an unknown field.
  bool IsText() const;
  // The bytes of such a value.
  std::string Text() const;
  // The value on one line. A text that is longer than the limit is cut.
  std::string Line(std::size_t limit) const;
};

struct FieldChange {
  enum class Kind { kAdded, kRemoved, kChanged };
  Kind kind;
  // Such as blockInfo[STP].state; an unknown field is #number.
  std::string path;
  // An added value has no old value, a removed value no new one.
  ValueRef old_value;
  ValueRef new_value;
};

// Compares with the runtime's MessageDifferencer, including unknown fields and presence. Compares
// the protocols of an entry as a set and its block entries by protocol, in any order; an identifier
// is one value. Ignores the field `without`, if there is one.
std::vector<FieldChange> CompareFields(const google::protobuf::Message& before,
                                       const google::protobuf::Message& after,
                                       const google::protobuf::FieldDescriptor* without = nullptr);

}  // namespace zorl2_inspect
