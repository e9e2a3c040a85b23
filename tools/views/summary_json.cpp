#include <fmt/format.h>
#include <google/protobuf/descriptor.h>

#include "tools/model/check_text.h"
#include "tools/model/odd_values.h"
#include "tools/text/json_writer.h"
#include "tools/views/problem_json.h"
#include "tools/views/summary_view.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::EnumDescriptor;

// Omits values that do not occur.
template <typename Counts>
void WriteCounts(JsonWriter& json, const char* name, const EnumDescriptor* type,
                 const Counts& counts) {
  json.Key(name);
  json.BeginObject();
  for (int i = 0; i < type->value_count(); ++i) {
    const auto count = counts[static_cast<std::size_t>(type->value(i)->number())];
    if (count > 0) json.Member(type->value(i)->name(), count);
  }
  json.EndObject();
}

void WriteExamples(JsonWriter& json, const char* name, const Examples& examples) {
  json.Key(name);
  json.BeginObject();
  json.Member("entries", examples.count);
  json.Key("examples");
  json.BeginArray();
  for (const std::string& example : examples.names) json.Value(example);
  json.EndArray();
  json.EndObject();
}

void WriteHeld(JsonWriter& json, const char* name, std::uint64_t entries,
               const std::array<Examples, pb::ProtocolType_ARRAYSIZE>& by) {
  json.Key(name);
  json.BeginObject();
  json.Member("entries", entries);
  json.Key("by");
  json.BeginObject();
  for (std::size_t i = 0; i < by.size(); ++i) {
    if (by[i].count == 0) continue;
    WriteExamples(json, pb::ProtocolType_Name(static_cast<pb::ProtocolType>(i)).c_str(), by[i]);
  }
  json.EndObject();
  json.EndObject();
}

// A speed is in kbit/s.
void WriteOddValue(JsonWriter& json, const char* name, OddValues::Field field,
                   std::uint32_t value) {
  if (field == OddValues::Field::kDuplex) {
    json.Member(name, OddValues::ValueText(field, value));
  } else {
    json.Member(name, value);
  }
}

void WriteOdd(JsonWriter& json, const OddValues& values) {
  json.Key("odd");
  json.BeginArray();
  for (const OddValues::Odd& odd : values.Find()) {
    json.BeginObject();
    json.Member("field", OddValues::FieldName(odd.field));
    json.Member("type", pb::InterfaceType_Name(odd.type));
    json.Member("category", pb::InterfaceCategory_Name(odd.category));
    json.Member("entries", odd.entries);
    WriteOddValue(json, "usual", odd.field, odd.usual);
    json.Member("unlike", odd.unlike);
    json.Key("examples");
    json.BeginArray();
    for (const auto& [name, value] : odd.examples) {
      json.BeginObject();
      json.Member("name", name);
      WriteOddValue(json, "value", odd.field, value);
      json.EndObject();
    }
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
}

void WritePorts(JsonWriter& json, const FrontPanel& panel) {
  json.Key("ports");
  json.BeginArray();
  for (const auto& [name, state] : panel.ports()) {
    json.BeginObject();
    json.Member("name", fmt::format("{}{}", name.first, name.second));
    json.Member("state", PortStateName(state));
    json.EndObject();
  }
  json.EndArray();
}

}  // namespace

void PrintSummaryAsJson(const SummaryReport& report, Output& out) {
  const ListSummary& list = report.list;
  JsonWriter json(out, JsonWriter::Layout::kIndented);
  json.BeginObject();
  json.Member("schema", "summary/1");
  json.Member("file", report.name);
  json.Member("type", report.type);
  json.Member("records", report.records);
  json.Member("malformed", report.unreadable);
  WriteProblem("first_malformed", report.first_unreadable, json);
  WriteProblem("broken", report.broken, json);
  json.Member("entries", list.entries);
  WriteCounts(json, "categories", pb::InterfaceCategory_descriptor(), list.categories);
  WriteCounts(json, "types", pb::InterfaceType_descriptor(), list.types);
  WriteCounts(json, "admin", pb::AdminStatus_descriptor(), list.admin);
  WriteCounts(json, "oper", pb::OperationalStatus_descriptor(), list.operational);
  WriteCounts(json, "link", pb::LinkStatus_descriptor(), list.link);
  WriteExamples(json, "down_although_enabled", list.down_though_enabled);
  WriteHeld(json, "shut", list.shut, list.shut_by);
  WriteHeld(json, "blocked", list.blocked, list.blocked_by);
  WriteOdd(json, list.odd);
  json.Key("lost");
  json.BeginObject();
  for (std::size_t i = 0; i < list.lost.size(); ++i) {
    json.Member(LossKindName(static_cast<zorl2::check::LossKind>(i)), list.lost[i]);
  }
  json.EndObject();
  WriteExamples(json, "rejected", list.rejected);
  WriteProblem("first_rejection", list.first_rejection, json);
  WritePorts(json, list.panel);
  json.Member("ports_left_out", list.panel.without_place());
  json.EndObject();
}

}  // namespace zorl2_inspect
