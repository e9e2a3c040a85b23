#include "tools/model/unknown_fields.h"

#include <fmt/format.h>

#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using google::protobuf::UnknownField;
using google::protobuf::UnknownFieldSet;

const char* WireName(const UnknownField& field) {
  switch (field.type()) {
    case UnknownField::TYPE_VARINT:
      return "varint";
    case UnknownField::TYPE_FIXED32:
      return "32-bit";
    case UnknownField::TYPE_FIXED64:
      return "64-bit";
    case UnknownField::TYPE_GROUP:
      return "group";
    default:
      return "length-delimited";
  }
}

// Calls visit(path, message) for the message and each message in it.
template <typename Visit>
void ForEachMessage(const Message& message, const std::string& path, const Visit& visit) {
  visit(path, message);
  std::vector<const FieldDescriptor*> fields;
  const Reflection& reflection = *message.GetReflection();
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    const std::string inner = Join(path, field->name());
    if (!field->is_repeated()) {
      ForEachMessage(reflection.GetMessage(message, field), inner, visit);
      continue;
    }
    for (int i = 0; i < reflection.FieldSize(message, field); ++i) {
      ForEachMessage(reflection.GetRepeatedMessage(message, field, i), At(inner, i), visit);
    }
  }
}

}  // namespace

std::string UnknownText(const UnknownField& field, std::size_t limit) {
  switch (field.type()) {
    case UnknownField::TYPE_VARINT:
      return fmt::format("{}", field.varint());
    case UnknownField::TYPE_FIXED32:
      return fmt::format("0x{:08x}", field.fixed32());
    case UnknownField::TYPE_FIXED64:
      return fmt::format("0x{:016x}", field.fixed64());
    case UnknownField::TYPE_GROUP:
      return fmt::format("{} fields", field.group().field_count());
    default:
      return Quoted(field.length_delimited(), limit);
  }
}

std::vector<UnknownValue> UnknownValues(const Message& message, std::size_t most) {
  std::vector<UnknownValue> values;
  ForEachMessage(message, "", [&](const std::string& path, const Message& part) {
    const UnknownFieldSet& unknown = part.GetReflection()->GetUnknownFields(part);
    for (int i = 0; i < unknown.field_count() && values.size() < most; ++i) {
      const UnknownField& field = unknown.field(i);
      const FieldDescriptor* known = part.GetDescriptor()->FindFieldByNumber(field.number());
      values.push_back({Join(path, fmt::format("#{}", field.number())), WireName(field),
                        UnknownText(field), known == nullptr ? std::string() : known->name()});
    }
  });
  return values;
}

std::size_t CountUnknown(const Message& message) {
  const Reflection& reflection = *message.GetReflection();
  auto count = static_cast<std::size_t>(reflection.GetUnknownFields(message).field_count());
  // Runs for each record of a stream, so it does not build the list of present fields or any path.
  for (int i = 0; i < message.GetDescriptor()->field_count(); ++i) {
    const FieldDescriptor* field = message.GetDescriptor()->field(i);
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    if (!field->is_repeated()) {
      if (!reflection.HasField(message, field)) continue;
      count += CountUnknown(reflection.GetMessage(message, field));
      continue;
    }
    for (int element = 0; element < reflection.FieldSize(message, field); ++element) {
      count += CountUnknown(reflection.GetRepeatedMessage(message, field, element));
    }
  }
  return count;
}

}  // namespace zorl2_inspect
