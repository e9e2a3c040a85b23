#include "tools/wire/wire_type.h"

namespace zorl2_inspect {

using google::protobuf::FieldDescriptor;

int WireTypeOf(const FieldDescriptor& field) {
  switch (field.type()) {
    case FieldDescriptor::TYPE_DOUBLE:
    case FieldDescriptor::TYPE_FIXED64:
    case FieldDescriptor::TYPE_SFIXED64:
      return kFixed64;
    case FieldDescriptor::TYPE_FLOAT:
    case FieldDescriptor::TYPE_FIXED32:
    case FieldDescriptor::TYPE_SFIXED32:
      return kFixed32;
    case FieldDescriptor::TYPE_STRING:
    case FieldDescriptor::TYPE_BYTES:
    case FieldDescriptor::TYPE_MESSAGE:
      return kLength;
    case FieldDescriptor::TYPE_GROUP:
      return kStartGroup;
    default:
      return kVarint;
  }
}

bool IsUnlisted(const FieldDescriptor& field, std::uint64_t value) {
  const auto* type = field.enum_type();
  return type != nullptr && type->FindValueByNumber(static_cast<std::int32_t>(value)) == nullptr;
}

const char* WireTypeName(int wire_type) {
  static const char* const kNames[] = {"varint",      "64-bit",    "length-delimited",
                                       "start group", "end group", "32-bit"};
  return wire_type >= 0 && wire_type <= kFixed32 ? kNames[wire_type] : "none";
}

}  // namespace zorl2_inspect
