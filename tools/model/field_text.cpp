#include "tools/model/field_text.h"

#include <fmt/format.h>
#include <google/protobuf/text_format.h>

#include <algorithm>

#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using zorl2::protobuf::Zorid;

constexpr int kMostOctets = 8;

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

std::string WithoutIndices(std::string_view path) {
  std::string text;
  bool in_index = false;
  for (const char c : path) {
    if (c == '[') in_index = true;
    if (!in_index) text += c;
    if (c == ']') in_index = false;
  }
  return text;
}

std::string OneLineText(const Message& message, std::size_t limit) {
  google::protobuf::TextFormat::Printer printer;
  printer.SetSingleLineMode(true);
  std::string text;
  printer.PrintToString(message, &text);
  while (!text.empty() && text.back() == ' ') text.pop_back();
  if (text.size() > limit) text.replace(limit, text.size(), "...");
  return text;
}

std::string ValueText(const Message& message, const FieldDescriptor& field, int index,
                      std::size_t limit) {
  const Reflection& reflection = *message.GetReflection();
  const bool singular = index < 0;
  std::string text;
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_MESSAGE: {
      const Message& inner = singular ? reflection.GetMessage(message, &field)
                                      : reflection.GetRepeatedMessage(message, &field, index);
      if (inner.GetDescriptor() == Zorid::descriptor() && limit != kNoLimit) {
        return DottedText(static_cast<const Zorid&>(inner));
      }
      return "{ " + OneLineText(inner, limit) + " }";
    }
    case FieldDescriptor::CPPTYPE_STRING:
      return Quoted(singular ? reflection.GetStringReference(message, &field, &text)
                             : reflection.GetRepeatedStringReference(message, &field, index, &text),
                    limit);
    default:
      google::protobuf::TextFormat::PrintFieldValueToString(message, &field, index, &text);
      return text;
  }
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
