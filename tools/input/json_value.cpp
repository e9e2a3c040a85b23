#include "tools/input/json_value.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>

#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::EnumDescriptor;
using google::protobuf::EnumValueDescriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using zorl2::protobuf::Zorid;

constexpr int kOctets = 4;

// A whole number, also as 1.0 or 1e3.
template <typename Integer>
std::optional<Integer> WholeNumber(std::string_view text) {
  const char* const end = text.data() + text.size();
  Integer number = 0;
  const auto parsed = std::from_chars(text.data(), end, number);
  if (parsed.ec == std::errc() && parsed.ptr == end) return number;
  const std::string copy(text);
  char* rest = nullptr;
  const long double real = std::strtold(copy.c_str(), &rest);
  using Limits = std::numeric_limits<Integer>;
  if (copy.find_first_of(".eE") == std::string::npos || *rest != '\0' || std::trunc(real) != real ||
      real < static_cast<long double>(Limits::min()) ||
      real > static_cast<long double>(Limits::max())) {
    return std::nullopt;
  }
  return static_cast<Integer>(real);
}

template <typename Integer, typename Set, typename Add>
bool StoreNumber(const JsonValue& value, const FieldDescriptor& field, Message& message, Set set,
                 Add add) {
  if (value.kind != JsonValue::Kind::kNumber && value.kind != JsonValue::Kind::kText) return false;
  const std::optional<Integer> number = WholeNumber<Integer>(value.text);
  if (!number) return false;
  const Reflection& reflection = *message.GetReflection();
  (reflection.*(field.is_repeated() ? add : set))(&message, &field, *number);
  return true;
}

// "0.0.1.44" as an identifier. Its values need not be octets.
bool StoreIdentifier(const JsonValue& value, const FieldDescriptor& field, Message& message) {
  if (field.message_type() != Zorid::descriptor() || value.kind != JsonValue::Kind::kText) {
    return false;
  }
  Zorid id;
  std::string_view rest = value.text;
  for (int i = 0; i < kOctets; ++i) {
    const std::size_t dot = i + 1 < kOctets ? rest.find('.') : rest.size();
    const std::string_view digits = rest.substr(0, dot);
    const std::optional<std::uint32_t> number = WholeNumber<std::uint32_t>(digits);
    if (!number || dot == rest.npos) return false;
    id.add_value(*number);
    rest.remove_prefix(std::min(dot + 1, rest.size()));
  }
  const Reflection& reflection = *message.GetReflection();
  Message* const stored = field.is_repeated() ? reflection.AddMessage(&message, &field)
                                              : reflection.MutableMessage(&message, &field);
  stored->CopyFrom(id);
  return true;
}

const EnumValueDescriptor* ListedValue(const JsonValue& value, const EnumDescriptor& type) {
  if (value.kind == JsonValue::Kind::kText) {
    if (const auto* named = type.FindValueByName(std::string(value.text))) return named;
  } else if (value.kind != JsonValue::Kind::kNumber) {
    return nullptr;
  }
  const std::optional<int> number = WholeNumber<int>(value.text);
  return number ? type.FindValueByNumber(*number) : nullptr;
}

}  // namespace

const FieldDescriptor* FieldNamed(const Descriptor& type, std::string_view name) {
  const std::string wanted(name);
  const FieldDescriptor* field = type.FindFieldByName(wanted);
  for (int i = 0; field == nullptr && i < type.field_count(); ++i) {
    if (type.field(i)->json_name() == wanted) field = type.field(i);
  }
  return field;
}

std::string ExpectedField(const Descriptor& type) {
  std::string names;
  for (int i = 0; i < type.field_count(); ++i)
    names += (i == 0 ? "" : ", ") + type.field(i)->name();
  return fmt::format("a field of {}: {}", type.name(), names);
}

std::string ExpectedValue(const FieldDescriptor& field) {
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL:
      return "true or false";
    case FieldDescriptor::CPPTYPE_STRING:
      return "a string";
    case FieldDescriptor::CPPTYPE_ENUM: {
      std::string names;
      for (int i = 0; i < field.enum_type()->value_count(); ++i) {
        names += (i == 0 ? "" : ", ") + field.enum_type()->value(i)->name();
      }
      return "one of " + names;
    }
    case FieldDescriptor::CPPTYPE_INT32:
      return "a whole number from -2147483648 to 2147483647";
    case FieldDescriptor::CPPTYPE_UINT32:
      return "a whole number from 0 to 4294967295";
    default:
      return "a whole number from 0 to 18446744073709551615";
  }
}

bool StoreValue(const JsonValue& value, const FieldDescriptor& field, Message& message) {
  const Reflection& reflection = *message.GetReflection();
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL: {
      if (value.kind != JsonValue::Kind::kBool) return false;
      const bool flag = value.text == "true";
      if (field.is_repeated()) {
        reflection.AddBool(&message, &field, flag);
      } else {
        reflection.SetBool(&message, &field, flag);
      }
      return true;
    }
    case FieldDescriptor::CPPTYPE_STRING:
      if (value.kind != JsonValue::Kind::kText) return false;
      if (field.is_repeated()) {
        reflection.AddString(&message, &field, std::string(value.text));
      } else {
        reflection.SetString(&message, &field, std::string(value.text));
      }
      return true;
    case FieldDescriptor::CPPTYPE_ENUM: {
      const EnumValueDescriptor* listed = ListedValue(value, *field.enum_type());
      if (listed == nullptr) return false;
      if (field.is_repeated()) {
        reflection.AddEnum(&message, &field, listed);
      } else {
        reflection.SetEnum(&message, &field, listed);
      }
      return true;
    }
    case FieldDescriptor::CPPTYPE_INT32:
      return StoreNumber<std::int32_t>(value, field, message, &Reflection::SetInt32,
                                       &Reflection::AddInt32);
    case FieldDescriptor::CPPTYPE_UINT32:
      return StoreNumber<std::uint32_t>(value, field, message, &Reflection::SetUInt32,
                                        &Reflection::AddUInt32);
    case FieldDescriptor::CPPTYPE_UINT64:
      return StoreNumber<std::uint64_t>(value, field, message, &Reflection::SetUInt64,
                                        &Reflection::AddUInt64);
    case FieldDescriptor::CPPTYPE_MESSAGE:
      return StoreIdentifier(value, field, message);
    default:
      return false;  // No field of the schema has another type.
  }
}

}  // namespace zorl2_inspect
