#include "tools/views/changes_view.h"

#include <fmt/format.h>

#include <string>

#include "interface_entry.pb.h"
#include "tools/model/check_text.h"
#include "tools/model/field_text.h"
#include "tools/model/message_forms.h"
#include "tools/text/error.h"
#include "tools/text/json_writer.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Message;
using Kind = FieldChange::Kind;

constexpr std::size_t kNameLimit = 40;
constexpr std::size_t kSummaryLimit = 160;

const pb::IntfEntry* AsEntry(const Message& message) {
  if (message.GetDescriptor() != pb::IntfEntry::descriptor()) return nullptr;
  return static_cast<const pb::IntfEntry*>(&message);
}

std::string NameOf(const Message& message) {
  const pb::IntfEntry* entry = AsEntry(message);
  return entry == nullptr ? "" : " " + Quoted(entry->generalinfo().intf_name(), kNameLimit);
}

// One line of an element as a whole.
std::string Summary(const Message& message) {
  if (const pb::IntfEntry* entry = AsEntry(message)) {
    const pb::StatusInfo& status = entry->statusinfo();
    std::string text =
        fmt::format("{}, {}, {}, {}, {}", pb::InterfaceType_Name(entry->typeinfo().interfacetype()),
                    pb::InterfaceCategory_Name(entry->intfcategory()),
                    pb::AdminStatus_Name(status.adminstatus()),
                    pb::OperationalStatus_Name(status.operationalstatus()),
                    pb::LinkStatus_Name(status.linkstatus()));
    for (int i = 0; i < entry->shutdownprotos_size() && i < pb::ProtocolType_ARRAYSIZE; ++i) {
      text += fmt::format("{}{}", i == 0 ? ", shut by " : " ",
                          pb::ProtocolType_Name(entry->shutdownprotos(i)));
    }
    return text;
  }
  return OneLineText(message, kSummaryLimit);
}

const char* KindName(Kind kind) {
  static const char* const kNames[] = {"added", "removed", "changed"};
  return kNames[static_cast<int>(kind)];
}

Colour ColourOf(Kind kind) {
  static const Colour kColours[] = {Colour::kGreen, Colour::kRed, Colour::kYellow};
  return kColours[static_cast<int>(kind)];
}

std::string FieldLine(const FieldChange& field) {
  switch (field.kind) {
    case Kind::kAdded:
      return fmt::format("+ {}: {}", field.path, field.new_value);
    case Kind::kRemoved:
      return fmt::format("- {}: {}", field.path, field.old_value);
    default:
      return fmt::format("~ {}: {} -> {}", field.path, field.old_value, field.new_value);
  }
}

std::string Elements(std::size_t count) {
  return fmt::format("{} element{}", count, count == 1 ? "" : "s");
}

std::size_t CountOf(const DiffResult& result, Kind kind) {
  std::size_t count = 0;
  for (const ElementChange& change : result.changes)
    count += change.is_element && change.kind == kind ? 1 : 0;
  return count;
}

void WriteChange(const ElementChange& change, JsonWriter& json) {
  json.BeginObject();
  json.Member("change", KindName(change.kind));
  json.Member("element", change.key);
  const Message& shown = change.after != nullptr ? *change.after : *change.before;
  if (const pb::IntfEntry* entry = AsEntry(shown)) {
    json.Member("name", entry->generalinfo().intf_name());
  }
  if (change.kind == Kind::kChanged) {
    json.Key("fields");
    json.BeginArray();
    for (const FieldChange& field : change.fields) {
      json.BeginObject();
      json.Member("change", KindName(field.kind));
      json.Member("path", field.path);
      if (field.kind != Kind::kAdded) json.Member("old", field.old_value);
      if (field.kind != Kind::kRemoved) json.Member("new", field.new_value);
      json.EndObject();
    }
    json.EndArray();
  } else {
    json.Key("value");
    WriteJson(shown, json);
  }
  json.EndObject();
}

}  // namespace

void PrintChanges(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                  const Palette& paint, Output& out) {
  if (result.equal()) {
    out.Print("no difference in {}\n", Elements(result.same));
    return;
  }
  out.Print("{}\n{}\n\n",
            paint(Colour::kRed, fmt::format("--- {} ({})", Printable(before.name),
                                            Elements(result.elements_before))),
            paint(Colour::kGreen, fmt::format("+++ {} ({})", Printable(after.name),
                                              Elements(result.elements_after))));
  for (const ElementChange& change : result.changes) {
    static const char* const kMarks[] = {"+", "-", "~"};
    const Message& shown = change.after != nullptr ? *change.after : *change.before;
    const std::string head = fmt::format("{} {}{}: {}", kMarks[static_cast<int>(change.kind)],
                                         change.key, NameOf(shown), KindName(change.kind));
    out.Print("{}", paint(ColourOf(change.kind), head));
    if (change.kind != Kind::kChanged) out.Print(" ({})", Summary(shown));
    const zorl2::check::Verdict verdict = zorl2::check::Check(shown);
    if (!Converts(verdict)) {
      out.Print("{}", paint(Colour::kMagenta, "  !! " + ProblemText(RejectionOf(verdict))));
    }
    out.Print("\n");
    for (const FieldChange& field : change.fields) {
      out.Print("    {}\n", paint(ColourOf(field.kind), FieldLine(field)));
    }
  }
  out.Print("\n{} added, {} removed, {} changed, {} the same\n", CountOf(result, Kind::kAdded),
            CountOf(result, Kind::kRemoved), CountOf(result, Kind::kChanged), result.same);
}

void PrintChangesAsJson(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                        Output& out) {
  JsonWriter json(out, JsonWriter::Layout::kIndented);
  json.BeginObject();
  json.Member("before", before.name);
  json.Member("after", after.name);
  json.Member("equal", result.equal());
  json.Member("added", CountOf(result, Kind::kAdded));
  json.Member("removed", CountOf(result, Kind::kRemoved));
  json.Member("changed", CountOf(result, Kind::kChanged));
  json.Member("same", result.same);
  json.Key("changes");
  json.BeginArray();
  for (const ElementChange& change : result.changes) WriteChange(change, json);
  json.EndArray();
  json.EndObject();
}

}  // namespace zorl2_inspect
