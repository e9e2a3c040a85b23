#include "tools/views/explain_json.h"

#include <google/protobuf/descriptor.h>

#include "tools/text/quoting.h"
#include "tools/views/problem_json.h"
#include "tools/wire/wire_type.h"
#include "zorid.pb.h"

namespace zorl2_inspect {

using google::protobuf::FieldDescriptor;

ExplainJson::ExplainJson(Output& out, bool of_stream)
    : json_(out, of_stream ? JsonWriter::Layout::kOneLine : JsonWriter::Layout::kIndented) {}

void ExplainJson::Begin(const std::string& file, const std::string& type, std::uint64_t record,
                        std::uint64_t offset, std::uint64_t bytes) {
  json_.BeginObject();
  json_.Member("schema", "explain/1");
  json_.Member("file", file);
  json_.Member("type", type);
  json_.Key("record");
  if (record == 0) {
    json_.Null();
  } else {
    json_.Value(record);
  }
  json_.Member("offset", offset);
  json_.Member("size", bytes);
  json_.Key("fields");
  json_.BeginArray();
}

void ExplainJson::Value(const ExplainRow& row) {
  if (row.field == nullptr) return json_.Null();
  const WireField& item = *row.field;
  const FieldDescriptor* const field = item.field;
  const bool leaf = item.kind == WireField::Kind::kLeaf || item.kind == WireField::Kind::kElement;
  if (field != nullptr && field->message_type() == zorl2::protobuf::Zorid::descriptor()) {
    return json_.Value(row.value);
  }
  if (!leaf) return json_.Null();
  if (item.kind == WireField::Kind::kLeaf && item.wire_type == kLength) {
    return json_.Value(item.content);
  }
  if (field == nullptr) return json_.Value(item.value);
  switch (field->cpp_type()) {
    case FieldDescriptor::CPPTYPE_BOOL:
      return json_.Value(item.value != 0);
    case FieldDescriptor::CPPTYPE_INT32:
      return json_.Value(static_cast<std::int32_t>(item.value));
    case FieldDescriptor::CPPTYPE_UINT32:
      return json_.Value(static_cast<std::uint32_t>(item.value));
    case FieldDescriptor::CPPTYPE_ENUM:
      break;
    default:
      return json_.Value(item.value);
  }
  const auto number = static_cast<std::int32_t>(item.value);
  const auto* const listed = field->enum_type()->FindValueByNumber(number);
  if (listed == nullptr) return json_.Value(number);
  json_.Value(listed->name());
}

void ExplainJson::Print(const ExplainRow& row) {
  json_.BeginObject();
  json_.Member("offset", row.offset);
  json_.Member("bytes", Hex(row.bytes));
  json_.Member("path", row.path);
  json_.MemberOrNull("type", row.type);
  json_.Key("value");
  Value(row);
  json_.Key("notes");
  json_.BeginArray();
  for (const Note& note : row.notes) {
    json_.BeginObject();
    json_.Member("kind", NoteName(note.kind));
    json_.Member("text", note.text);
    json_.EndObject();
  }
  json_.EndArray();
  json_.EndObject();
}

void ExplainJson::End(const std::optional<Problem>& damage,
                      const std::optional<Problem>& rejection) {
  json_.EndArray();
  WriteProblem("damage", damage, json_);
  WriteProblem("rejection", rejection, json_);
  json_.EndObject();
}

}  // namespace zorl2_inspect
