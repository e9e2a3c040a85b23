#include "tools/model/condition.h"

#include <fmt/format.h>

#include <algorithm>

#include "interface_entry.pb.h"
#include "tools/model/field_text.h"
#include "tools/model/value_text.h"
#include "tools/text/error.h"
#include "tools/text/quoting.h"
#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::EnumDescriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

constexpr const char* kOption = "--where";

template <typename Value>
int Order(const Value& a, const Value& b) {
  return a < b ? -1 : (b < a ? 1 : 0);
}

const pb::Zorid& IdentifierIn(const Message& parent, const FieldDescriptor& field, int index) {
  const Reflection& reflection = *parent.GetReflection();
  return static_cast<const pb::Zorid&>(index < 0
                                           ? reflection.GetMessage(parent, &field)
                                           : reflection.GetRepeatedMessage(parent, &field, index));
}

const std::string& TextIn(const Message& parent, const FieldDescriptor& field, int index,
                          std::string* scratch) {
  const Reflection& reflection = *parent.GetReflection();
  return index < 0 ? reflection.GetStringReference(parent, &field, scratch)
                   : reflection.GetRepeatedStringReference(parent, &field, index, scratch);
}

int EnumNumberIn(const Message& parent, const FieldDescriptor& field, int index) {
  const Reflection& reflection = *parent.GetReflection();
  return index < 0 ? reflection.GetEnumValue(parent, &field)
                   : reflection.GetRepeatedEnumValue(parent, &field, index);
}

std::string FirstPathIn(const FieldDescriptor& field) {
  return fmt::format("a value in it, such as {}.{}", field.name(),
                     field.message_type()->field(0)->name());
}

}  // namespace

Condition::Parts Condition::Split(std::string_view text) {
  static constexpr std::pair<const char*, Operator> kOperators[] = {
      {"!=", Operator::kUnequal}, {"<=", Operator::kLessOrEqual}, {">=", Operator::kGreaterOrEqual},
      {"=", Operator::kEqual},    {"<", Operator::kLess},         {">", Operator::kGreater},
      {"~", Operator::kLike}};
  const std::size_t place = std::min(text.find_first_of("=!<>~"), text.size());
  for (const auto& [name, op] : kOperators) {
    const std::string_view sign = name;
    if (place == 0 || text.substr(place, sign.size()) != sign) continue;
    return {Trimmed(text.substr(0, place)), op, Trimmed(text.substr(place + sign.size()))};
  }
  throw Error(kOption, Quoted(text, kShortText),
              "FIELD, one of = != < <= > >= ~, and a value: oper=DOWN");
}

Condition::Condition(const Descriptor& record, std::string_view text)
    : Condition(record, Split(text)) {}

Condition::Condition(const Descriptor& record, const Parts& parts)
    : field_(record, parts.field, kOption), op_(parts.op), value_(parts.value) {
  const FieldDescriptor& field = field_.field();
  const bool is_message = field.message_type() != nullptr;
  if (value_.empty()) {
    if (op_ != Operator::kEqual && op_ != Operator::kUnequal) Reject("a value");
  } else if (field_.is_identifier()) {
    ReadIdentifier();
  } else if (is_message) {
    throw Error(kOption, Quoted(field_.text(), kShortText), FirstPathIn(field));
  } else if (field.enum_type() != nullptr) {
    ReadEnumeration();
  } else if (field.cpp_type() == FieldDescriptor::CPPTYPE_BOOL) {
    const std::string name = Uppercase(value_);
    if (op_ != Operator::kEqual && op_ != Operator::kUnequal) {
      throw Error(kOption, Quoted(field_.text(), kShortText), "= or != for true or false");
    }
    if (name != "TRUE" && name != "FALSE" && name != "0" && name != "1") Reject("true, false");
    unsigned_ = name == "TRUE" || name == "1" ? 1 : 0;
  } else if (field.cpp_type() != FieldDescriptor::CPPTYPE_STRING && op_ != Operator::kLike) {
    ReadNumber();
  }
}

void Condition::Reject(const std::string& expected) const {
  throw Error(kOption, Problem{0, {}, {}, field_.text(), Quoted(value_, kShortText), expected});
}

void Condition::ReadEnumeration() {
  const EnumDescriptor& type = *field_.field().enum_type();
  if (op_ == Operator::kLike) {
    const std::string wanted = Uppercase(value_);
    for (int i = 0; i < type.value_count(); ++i) {
      const std::string name = Uppercase(type.value(i)->name());
      const bool fits =
          IsPattern(wanted) ? FitsPattern(name, wanted) : name.find(wanted) != std::string::npos;
      if (fits) enumeration_.insert(type.value(i)->number());
    }
  } else if (const auto* value = FindEnumValue(type, value_)) {
    enumeration_.insert(value->number());
  }
  if (enumeration_.empty()) Reject(EnumNames(type));
}

void Condition::ReadNumber() {
  const FieldDescriptor& field = field_.field();
  const bool is_signed = field.cpp_type() == FieldDescriptor::CPPTYPE_INT32 ||
                         field.cpp_type() == FieldDescriptor::CPPTYPE_INT64;
  if (is_signed) {
    const auto number = ParseSigned(value_);
    if (!number) Reject("a number");
    signed_ = *number;
    return;
  }
  const bool is_rate = &field == pb::StatusInfo::descriptor()->FindFieldByName("operationalSpeed");
  const auto number = is_rate ? ParseRate(value_) : ParseUnsigned(value_);
  if (!number) Reject(is_rate ? "a number of kbit/s, or a rate such as 10G" : "a number");
  unsigned_ = *number;
}

void Condition::ReadIdentifier() {
  if (op_ == Operator::kLike) return;
  const auto values = ParseDotted(value_);
  if (!values) Reject("an identifier such as 0.0.0.48");
  identifier_ = *values;
}

bool Condition::Fits(int order) const {
  switch (op_) {
    case Operator::kLess:
      return order < 0;
    case Operator::kLessOrEqual:
      return order <= 0;
    case Operator::kGreater:
      return order > 0;
    case Operator::kGreaterOrEqual:
      return order >= 0;
    default:
      return order == 0;
  }
}

bool Condition::FitsText(std::string_view text) const {
  return IsPattern(value_) ? FitsPattern(text, value_) : text.find(value_) != text.npos;
}

bool Condition::FitsValue(const Message& parent, int index) const {
  const FieldDescriptor& field = field_.field();
  const Reflection& reflection = *parent.GetReflection();
  const bool one = index < 0;
  std::string scratch;
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_MESSAGE: {
      const pb::Zorid& id = IdentifierIn(parent, field, index);
      if (op_ == Operator::kLike) return FitsText(DottedText(id));
      const auto& values = id.value();
      const bool less = std::lexicographical_compare(values.begin(), values.end(),
                                                     identifier_.begin(), identifier_.end());
      const bool greater = std::lexicographical_compare(identifier_.begin(), identifier_.end(),
                                                        values.begin(), values.end());
      return Fits(less ? -1 : (greater ? 1 : 0));
    }
    case FieldDescriptor::CPPTYPE_STRING: {
      const std::string& text = TextIn(parent, field, index, &scratch);
      return op_ == Operator::kLike ? FitsText(text) : Fits(Order(text, value_));
    }
    case FieldDescriptor::CPPTYPE_ENUM: {
      const int number = EnumNumberIn(parent, field, index);
      if (op_ == Operator::kLike) return enumeration_.count(number) != 0;
      return Fits(Order(number, *enumeration_.begin()));
    }
    case FieldDescriptor::CPPTYPE_BOOL: {
      const bool set = one ? reflection.GetBool(parent, &field)
                           : reflection.GetRepeatedBool(parent, &field, index);
      return Fits(Order(set, unsigned_ != 0));
    }
    default:
      break;
  }
  if (op_ == Operator::kLike) return FitsText(ValueText(parent, field, index));
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_INT32:
      return Fits(Order<std::int64_t>(one ? reflection.GetInt32(parent, &field)
                                          : reflection.GetRepeatedInt32(parent, &field, index),
                                      signed_));
    case FieldDescriptor::CPPTYPE_UINT32:
      return Fits(Order<std::uint64_t>(one ? reflection.GetUInt32(parent, &field)
                                           : reflection.GetRepeatedUInt32(parent, &field, index),
                                       unsigned_));
    default:
      return Fits(Order<std::uint64_t>(one ? reflection.GetUInt64(parent, &field)
                                           : reflection.GetRepeatedUInt64(parent, &field, index),
                                       unsigned_));
  }
}

bool Condition::IsEmpty(const FieldName& field, const Message& parent, int index) {
  if (field.is_identifier()) {
    const auto& values = IdentifierIn(parent, field.field(), index).value();
    return std::all_of(values.begin(), values.end(),
                       [](std::uint32_t value) { return value == 0; });
  }
  if (field.field().cpp_type() != FieldDescriptor::CPPTYPE_STRING) return false;
  std::string scratch;
  return TextIn(parent, field.field(), index, &scratch).empty();
}

bool Condition::Holds(const Message& message) const {
  bool any = false;
  field_.ForEach(message, [&](const Message& parent, int index) {
    any = any || (value_.empty() ? !IsEmpty(field_, parent, index) : FitsValue(parent, index));
  });
  // With an empty VALUE, "=" selects elements without a value.
  const bool negated = value_.empty() ? op_ == Operator::kEqual : op_ == Operator::kUnequal;
  return any != negated;
}

}  // namespace zorl2_inspect
