#include <fmt/format.h>
#include <google/protobuf/text_format.h>

#include <string>

#include "interface_entry.pb.h"
#include "tools/diff.h"
#include "tools/plain_text.h"
#include "tools/stats_report.h"
#include "tools/text_forms.h"

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
  google::protobuf::TextFormat::Printer printer;
  printer.SetSingleLineMode(true);
  std::string text;
  printer.PrintToString(message, &text);
  while (!text.empty() && text.back() == ' ') text.pop_back();
  if (text.size() > kSummaryLimit) {
    text.resize(kSummaryLimit);
    text += "...";
  }
  return text;
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
  for (const ElementChange& change : result.changes) count += change.kind == kind ? 1 : 0;
  return count;
}

std::string AsJson(const Message& message) {
  std::string json = ToJson(message, false);
  while (!json.empty() && json.back() == '\n') json.pop_back();
  return json;
}

}  // namespace

void PrintChanges(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                  const Palette& paint, std::FILE* out) {
  if (result.equal()) {
    fmt::print(out, "no difference in {}\n", Elements(result.same));
    return;
  }
  fmt::print(out, "{}\n{}\n\n",
             paint(Colour::kRed,
                   fmt::format("--- {} ({})", before.name, Elements(result.elements_before))),
             paint(Colour::kGreen,
                   fmt::format("+++ {} ({})", after.name, Elements(result.elements_after))));
  for (const ElementChange& change : result.changes) {
    static const char* const kMarks[] = {"+", "-", "~"};
    const Message& shown = change.after != nullptr ? *change.after : *change.before;
    const std::string head = fmt::format("{} {}{}: {}", kMarks[static_cast<int>(change.kind)],
                                         change.key, NameOf(shown), KindName(change.kind));
    fmt::print(out, "{}", paint(ColourOf(change.kind), head));
    if (change.kind != Kind::kChanged) fmt::print(out, " ({})", Summary(shown));
    fmt::print(out, "\n");
    for (const FieldChange& field : change.fields) {
      fmt::print(out, "    {}\n", paint(ColourOf(field.kind), FieldLine(field)));
    }
  }
  fmt::print(out, "\n{} added, {} removed, {} changed, {} the same\n",
             CountOf(result, Kind::kAdded), CountOf(result, Kind::kRemoved),
             CountOf(result, Kind::kChanged), result.same);
}

void PrintChangesAsJson(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                        std::FILE* out) {
  fmt::print(out,
             "{{\"before\": {}, \"after\": {}, \"equal\": {}, \"added\": {}, \"removed\": {}, "
             "\"changed\": {}, \"same\": {}, \"changes\": [",
             JsonQuoted(before.name), JsonQuoted(after.name), result.equal(),
             CountOf(result, Kind::kAdded), CountOf(result, Kind::kRemoved),
             CountOf(result, Kind::kChanged), result.same);
  const char* separator = "\n";
  for (const ElementChange& change : result.changes) {
    fmt::print(out, "{}  {{\"change\": \"{}\", \"element\": {}", separator, KindName(change.kind),
               JsonQuoted(change.key));
    separator = ",\n";
    const Message& shown = change.after != nullptr ? *change.after : *change.before;
    if (const pb::IntfEntry* entry = AsEntry(shown)) {
      fmt::print(out, ", \"name\": {}", JsonQuoted(entry->generalinfo().intf_name()));
    }
    if (change.kind != Kind::kChanged) {
      fmt::print(out, ", \"value\": {}}}", AsJson(shown));
      continue;
    }
    fmt::print(out, ", \"fields\": [");
    const char* comma = "";
    for (const FieldChange& field : change.fields) {
      fmt::print(out, "{}\n    {{\"change\": \"{}\", \"path\": {}", comma, KindName(field.kind),
                 JsonQuoted(field.path));
      if (field.kind != Kind::kAdded) fmt::print(out, ", \"old\": {}", JsonQuoted(field.old_value));
      if (field.kind != Kind::kRemoved) {
        fmt::print(out, ", \"new\": {}", JsonQuoted(field.new_value));
      }
      fmt::print(out, "}}");
      comma = ",";
    }
    fmt::print(out, "]}}");
  }
  fmt::print(out, "]}}\n");
}

}  // namespace zorl2_inspect
