#include "tools/field_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/plain_text.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using google::protobuf::UnknownField;
using google::protobuf::UnknownFieldSet;
using zorl2::protobuf::Zorid;

constexpr std::size_t kLongestText = 60;
constexpr int kMostOctets = 8;

const char* WireName(const UnknownField& field) {
  switch (field.type()) {
    case UnknownField::TYPE_VARINT:
      return "varint";
    case UnknownField::TYPE_FIXED32:
      return "fixed32";
    case UnknownField::TYPE_FIXED64:
      return "fixed64";
    case UnknownField::TYPE_GROUP:
      return "group";
    default:
      return "length-delimited";
  }
}

std::string UnknownText(const UnknownField& field) {
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
      return Quoted(field.length_delimited(), kLongestText);
  }
}

std::string KnownAs(const UnknownField& unknown, const Message& message) {
  const FieldDescriptor* field = message.GetDescriptor()->FindFieldByNumber(unknown.number());
  if (field == nullptr) return "";
  if (field->cpp_type() == FieldDescriptor::CPPTYPE_ENUM &&
      unknown.type() == UnknownField::TYPE_VARINT) {
    return fmt::format("{}: {} does not list {}", field->name(), field->enum_type()->name(),
                       static_cast<std::int64_t>(unknown.varint()));
  }
  return fmt::format("{}: not of its wire type", field->name());
}

void CollectUnknown(const Message& message, const std::string& path,
                    std::vector<UnknownValue>& all) {
  const std::vector<UnknownValue> here = UnknownValuesHere(message, path);
  all.insert(all.end(), here.begin(), here.end());
  std::vector<const FieldDescriptor*> fields;
  const Reflection& reflection = *message.GetReflection();
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    const std::string inner = Join(path, field->name());
    if (!field->is_repeated()) {
      CollectUnknown(reflection.GetMessage(message, field), inner, all);
      continue;
    }
    for (int i = 0; i < reflection.FieldSize(message, field); ++i) {
      CollectUnknown(reflection.GetRepeatedMessage(message, field, i), At(inner, i), all);
    }
  }
}

void CollectLeaves(const Message& message, const std::string& path, std::size_t most,
                   std::vector<PathValue>& leaves) {
  std::vector<const FieldDescriptor*> fields;
  const Reflection& reflection = *message.GetReflection();
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    const std::string name = Join(path, field->name());
    const int count = field->is_repeated() ? reflection.FieldSize(message, field) : 1;
    for (int i = 0; i < count && leaves.size() < most; ++i) {
      const std::string at = field->is_repeated() ? At(name, i) : name;
      if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) {
        leaves.push_back({at, ValueText(message, *field, field->is_repeated() ? i : -1)});
        continue;
      }
      const Message& inner = field->is_repeated() ? reflection.GetRepeatedMessage(message, field, i)
                                                  : reflection.GetMessage(message, field);
      if (inner.GetDescriptor() == Zorid::descriptor()) {
        leaves.push_back({at, DottedText(static_cast<const Zorid&>(inner))});
      } else {
        CollectLeaves(inner, at, most, leaves);
      }
    }
  }
}

}  // namespace

std::string DottedText(const Zorid& id) {
  std::string text;
  for (int i = 0; i < std::min(id.value_size(), kMostOctets); ++i) {
    if (i > 0) text += '.';
    text += fmt::format("{}", id.value(i));
  }
  if (id.value_size() == 4) return text;
  if (id.value_size() == 0) return "(0 values)";
  if (id.value_size() > kMostOctets) text += "...";
  return fmt::format("{} ({} value{})", text, id.value_size(), id.value_size() == 1 ? "" : "s");
}

std::string Join(std::string_view path, std::string_view name) {
  if (path.empty()) return std::string(name);
  return fmt::format("{}.{}", path, name);
}

std::string At(std::string_view path, int index) { return fmt::format("{}[{}]", path, index); }

std::string ValueText(const Message& message, const FieldDescriptor& field, int index) {
  const Reflection& get = *message.GetReflection();
  const bool one = index < 0;
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL:
      return (one ? get.GetBool(message, &field) : get.GetRepeatedBool(message, &field, index))
                 ? "true"
                 : "false";
    case FieldDescriptor::CPPTYPE_ENUM:
      return (one ? get.GetEnum(message, &field) : get.GetRepeatedEnum(message, &field, index))
          ->name();
    case FieldDescriptor::CPPTYPE_STRING:
      return Quoted(
          one ? get.GetString(message, &field) : get.GetRepeatedString(message, &field, index),
          kLongestText);
    case FieldDescriptor::CPPTYPE_INT32:
      return fmt::format(
          "{}", one ? get.GetInt32(message, &field) : get.GetRepeatedInt32(message, &field, index));
    case FieldDescriptor::CPPTYPE_UINT32:
      return fmt::format("{}", one ? get.GetUInt32(message, &field)
                                   : get.GetRepeatedUInt32(message, &field, index));
    case FieldDescriptor::CPPTYPE_UINT64:
      return fmt::format("{}", one ? get.GetUInt64(message, &field)
                                   : get.GetRepeatedUInt64(message, &field, index));
    default:
      return "?";  // no field of the schema is of another type
  }
}

std::vector<UnknownValue> UnknownValuesHere(const Message& message, std::string_view path) {
  std::vector<UnknownValue> values;
  const UnknownFieldSet& unknown = message.GetReflection()->GetUnknownFields(message);
  for (int i = 0; i < unknown.field_count(); ++i) {
    const UnknownField& field = unknown.field(i);
    const FieldDescriptor* known = message.GetDescriptor()->FindFieldByNumber(field.number());
    values.push_back({Join(path, fmt::format("#{}", field.number())),
                      known == nullptr ? std::string() : Join(path, known->name()), field.number(),
                      WireName(field), UnknownText(field), KnownAs(field, message)});
  }
  return values;
}

std::vector<UnknownValue> UnknownValues(const Message& message) {
  std::vector<UnknownValue> all;
  CollectUnknown(message, "", all);
  return all;
}

std::vector<PathValue> Leaves(const Message& message, std::size_t most) {
  std::vector<PathValue> leaves;
  if (message.GetDescriptor() == Zorid::descriptor()) {
    return {{"value", DottedText(static_cast<const Zorid&>(message))}};
  }
  CollectLeaves(message, "", most, leaves);
  return leaves;
}

}  // namespace zorl2_inspect
