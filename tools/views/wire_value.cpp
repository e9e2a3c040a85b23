#include "tools/views/wire_value.h"

#include <fmt/format.h>

#include <cstdint>

#include "tools/model/field_text.h"
#include "tools/model/native_enums.h"
#include "tools/text/quoting.h"
#include "tools/wire/wire_type.h"
#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::EnumValueDescriptor;
using google::protobuf::FieldDescriptor;
using zorl2::protobuf::Zorid;

constexpr std::size_t kLongestText = 64;

std::string RawText(const WireField& field) {
  switch (field.wire_type) {
    case kVarint:
      return std::to_string(field.value);
    case kFixed64:
      return fmt::format("0x{:016x}", field.value);
    case kFixed32:
      return fmt::format("0x{:08x}", field.value);
    case kLength:
      return Quoted(field.content, kLongestText);
    default:
      return "group";
  }
}

std::string IdentifierText(const WireField& field) {
  Zorid id;
  const auto size = static_cast<int>(field.content.size());
  return id.ParsePartialFromArray(field.content.data(), size) ? DottedText(id) : "damaged";
}

std::string EnumText(const WireField& field) {
  const auto number = static_cast<std::int32_t>(field.value);
  const EnumValueDescriptor* value = field.field->enum_type()->FindValueByNumber(number);
  if (value == nullptr) return fmt::format("{} (unlisted)", number);
  const auto native = NativeNumber(*value);
  if (native && *native != number) {
    return fmt::format("{} ({}, native {})", value->name(), number, *native);
  }
  return fmt::format("{} ({})", value->name(), number);
}

}  // namespace

std::string WireValueText(const WireField& field) {
  if (field.field == nullptr) return RawText(field);
  if (field.kind == WireField::Kind::kMessage &&
      field.field->message_type() == Zorid::descriptor()) {
    return IdentifierText(field);
  }
  if (field.kind == WireField::Kind::kMessage || field.kind == WireField::Kind::kPacked) {
    return fmt::format("{} bytes", field.content.size());
  }
  switch (field.field->cpp_type()) {
    case FieldDescriptor::CPPTYPE_ENUM:
      return EnumText(field);
    case FieldDescriptor::CPPTYPE_BOOL:
      return field.value != 0 ? "true" : "false";
    case FieldDescriptor::CPPTYPE_STRING:
      return Quoted(field.content, kLongestText);
    case FieldDescriptor::CPPTYPE_INT32:
      return std::to_string(static_cast<std::int32_t>(field.value));
    default:
      return std::to_string(field.value);
  }
}

std::string SchemaTypeText(const FieldDescriptor& field) {
  if (field.type() == FieldDescriptor::TYPE_MESSAGE) return field.message_type()->name();
  if (field.type() == FieldDescriptor::TYPE_ENUM) return "enum " + field.enum_type()->name();
  return field.type_name();
}

std::string WireTypeText(const WireField& field) {
  if (field.field == nullptr) return fmt::format("unknown, {}", WireTypeName(field.wire_type));
  const std::string name = SchemaTypeText(*field.field);
  return field.kind == WireField::Kind::kPacked ? "packed " + name : name;
}

}  // namespace zorl2_inspect
