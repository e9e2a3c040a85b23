// One condition on a field: "statusInfo.operationalStatus=DOWN".
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tools/model/field_name.h"

namespace zorl2_inspect {

// FIELD OP VALUE. The operators are = != < <= > >= and ~, which looks for a part of the text or, if
// VALUE contains * or ?, compares the whole text with the pattern. A repeated field fulfils a
// condition if one of its values does, an absent field fulfils none; != is true where = is false.
// An empty VALUE means no value: an absent field, an empty text, the identifier 0.0.0.0.
class Condition {
 public:
  // Throws Error for an unknown field, a wrong value, and an operator that the field does not have.
  Condition(const google::protobuf::Descriptor& record, std::string_view text);

  // Whether the condition is about an element of the record's list, and not about the record.
  bool of_element() const { return field_.of_element(); }
  // The message is an element or a record accordingly.
  bool Holds(const google::protobuf::Message& message) const;

 private:
  enum class Operator { kEqual, kUnequal, kLess, kLessOrEqual, kGreater, kGreaterOrEqual, kLike };
  struct Parts {
    std::string_view field;
    Operator op;
    std::string_view value;
  };

  static Parts Split(std::string_view text);
  Condition(const google::protobuf::Descriptor& record, const Parts& parts);

  [[noreturn]] void Reject(const std::string& expected) const;
  void ReadEnumeration();
  void ReadNumber();
  void ReadIdentifier();
  // Whether the result of comparing a value with VALUE fits the operator; treats != like =.
  bool Fits(int order) const;
  bool FitsValue(const google::protobuf::Message& parent, int index) const;
  bool FitsText(std::string_view text) const;
  static bool IsEmpty(const FieldName& field, const google::protobuf::Message& parent, int index);

  FieldName field_;
  Operator op_;
  std::string value_;
  // VALUE for a field that is neither an enumeration, an identifier nor a number.
  std::set<int> enumeration_;
  std::vector<std::uint32_t> identifier_;
  std::uint64_t unsigned_ = 0;
  std::int64_t signed_ = 0;
};

}  // namespace zorl2_inspect
