#include "tools/model/field_path.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "tools/text/error.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

std::string FieldNames(const Descriptor& type) {
  std::string names;
  for (int i = 0; i < type.field_count(); ++i) {
    names += (i == 0 ? "" : ", ") + type.field(i)->name();
  }
  return names;
}

FieldPath::Step ParseStep(const Descriptor* type, std::string_view step) {
  if (type == nullptr) throw Error("field path", Quoted(step), "the end of the path");
  const std::size_t bracket = step.find('[');
  const FieldDescriptor* field = type->FindFieldByName(std::string(step.substr(0, bracket)));
  if (field == nullptr) {
    throw Error("field path", Quoted(step),
                fmt::format("a field of {}: {}", type->name(), FieldNames(*type)));
  }
  if (bracket == std::string_view::npos) return {field, FieldPath::kAll};
  int index = -1;
  const char* const end = step.data() + step.size();
  const auto parsed = std::from_chars(step.data() + bracket + 1, end, index);
  if (!field->is_repeated() || index < 0 || parsed.ec != std::errc() || parsed.ptr + 1 != end ||
      *parsed.ptr != ']') {
    throw Error("field path", Quoted(step),
                field->is_repeated() ? fmt::format("{}[NUMBER]", field->name()) : field->name());
  }
  return {field, index};
}

// One level down.
const Message& Descend(const Message& message, const FieldPath::Step& step) {
  const Reflection& reflection = *message.GetReflection();
  return step.field->is_repeated() ? reflection.GetRepeatedMessage(message, step.field, step.index)
                                   : reflection.GetMessage(message, step.field);
}

}  // namespace

FieldPath::FieldPath(const Descriptor& type, std::string_view path) : text_(path) {
  const Descriptor* current = &type;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find('.', begin), path.size());
    steps_.push_back(ParseStep(current, path.substr(begin, end - begin)));
    current = steps_.back().field->message_type();
    begin = end + 1;
  }
}

void FieldPath::ForEach(const Message& message, const Visit& visit) const {
  const auto walk = [&](const auto& self, const Message& parent, std::size_t depth) -> void {
    const auto [field, wanted] = steps_[depth];
    const Reflection& reflection = *parent.GetReflection();
    const bool repeated = field->is_repeated();
    const int count = repeated                             ? reflection.FieldSize(parent, field)
                      : reflection.HasField(parent, field) ? 1
                                                           : 0;
    for (int i = 0; i < count; ++i) {
      if (wanted != kAll && wanted != i) continue;
      if (depth + 1 == steps_.size()) {
        visit(parent, repeated ? i : -1);
      } else {
        self(self,
             repeated ? reflection.GetRepeatedMessage(parent, field, i)
                      : reflection.GetMessage(parent, field),
             depth + 1);
      }
    }
  };
  walk(walk, message, 0);
}

const Message& ParentAt(const Message& message, const FieldPath& path) {
  const Message* parent = &message;
  for (std::size_t i = 0; i + 1 < path.steps().size(); ++i) {
    parent = &Descend(*parent, path.steps()[i]);
  }
  return *parent;
}

const Message& MessageAt(const Message& message, std::string_view path) {
  if (path.empty()) return message;
  const FieldPath fields(*message.GetDescriptor(), path);
  return Descend(ParentAt(message, fields), fields.steps().back());
}

}  // namespace zorl2_inspect
