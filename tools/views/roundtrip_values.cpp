#include "tools/views/roundtrip_values.h"

#include <algorithm>

#include "tools/model/field_path.h"
#include "tools/model/field_text.h"
#include "tools/model/message_forms.h"
#include "tools/model/value_text.h"
#include "tools/wire/wire_find.h"
#include "zorid.pb.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using google::protobuf::UnknownField;
using zorl2::check::Loss;
using zorl2::check::LossKind;

bool IsWholeList(const FieldPath::Step& step) {
  return step.field->is_repeated() && step.index == FieldPath::kAll;
}

bool IsIdentifier(const Message& message) {
  return message.GetDescriptor() == zorl2::protobuf::Zorid::descriptor();
}

// An identifier that is the whole message.
void WriteIdentifier(const Message& message, JsonWriter& json) {
  const auto& id = static_cast<const zorl2::protobuf::Zorid&>(message);
  if (id.value_size() == 4) return json.Value(DottedText(id));
  WriteJson(id, json);
}

}  // namespace

void RoundTripValues::WriteUnknown(const Loss& loss, JsonWriter& json) {
  const std::string_view parent = MessagePath(loss.field);
  auto place = unknown_.find(parent);
  if (place == unknown_.end()) {
    place = unknown_.emplace(parent, Unknown{}).first;
    const Message& message = MessageAt(message_, parent);
    const auto& unknown = message.GetReflection()->GetUnknownFields(message);
    for (int i = 0; i < unknown.field_count(); ++i) {
      place->second.fields.push_back(&unknown.field(i));
    }
    std::stable_sort(place->second.fields.begin(), place->second.fields.end(),
                     [](const auto* a, const auto* b) { return a->number() < b->number(); });
  }
  Unknown& unknown = place->second;
  // Masses of unknown fields are one loss with their number.
  const bool is_one = loss.field.compare(loss.field.rfind('#') + 1, std::string::npos, "...") != 0;
  if (!is_one || unknown.next >= unknown.fields.size()) return json.Value(loss.before);
  WriteJsonValue(*unknown.fields[unknown.next++], json);
}

void RoundTripValues::WriteBefore(const Loss& loss, JsonWriter& json) {
  if (loss.kind == LossKind::kDefaulted) return json.Null();
  if (loss.kind == LossKind::kUnknownField) return WriteUnknown(loss, json);
  if (IsIdentifier(message_)) return WriteIdentifier(message_, json);
  const FieldPath path(*message_.GetDescriptor(), loss.field);
  const FieldPath::Step& last = path.steps().back();
  // The order of a list is no value.
  if (IsWholeList(last)) return json.Value(loss.before);
  WriteJsonValue(ParentAt(message_, path), *last.field, last.index, json);
}

void RoundTripValues::WriteAfter(const Loss& loss, JsonWriter& json) const {
  if (loss.after.empty()) return json.Null();
  if (loss.kind == LossKind::kUnknownField) return json.Value(loss.after);
  const FieldPath path(*message_.GetDescriptor(), loss.field);
  switch (path.field().cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL:
      return json.Value(loss.after == "true");
    case FieldDescriptor::CPPTYPE_UINT32:
    case FieldDescriptor::CPPTYPE_UINT64:
      if (const auto number = ParseUnsigned(loss.after)) return json.Value(*number);
      break;
    default:
      break;
  }
  json.Value(loss.after);
}

void RoundTripValues::WriteRejected(const std::string& field, JsonWriter& json) const {
  if (IsIdentifier(message_)) return WriteIdentifier(message_, json);
  const FieldPath path(*message_.GetDescriptor(), field);
  const FieldPath::Step& last = path.steps().back();
  const Message& parent = ParentAt(message_, path);
  const Reflection& reflection = *parent.GetReflection();
  if (last.field->is_repeated() || reflection.HasField(parent, last.field)) {
    return WriteJsonValue(parent, *last.field, last.index, json);
  }
  const auto& unknown = reflection.GetUnknownFields(parent);
  for (int i = unknown.field_count(); i-- > 0;) {
    if (unknown.field(i).number() == last.field->number()) {
      return WriteJsonValue(unknown.field(i), json);
    }
  }
  json.Null();
}

}  // namespace zorl2_inspect
