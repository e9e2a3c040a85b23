#include "tools/views/changes_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "tools/model/check_text.h"
#include "tools/model/elements.h"
#include "tools/model/field_text.h"
#include "tools/model/message_forms.h"
#include "tools/model/text_changes.h"
#include "tools/text/error.h"
#include "tools/text/quoting.h"
#include "tools/views/problem_json.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using Kind = FieldChange::Kind;

constexpr std::size_t kNameLimit = 40;
constexpr std::size_t kSummaryLimit = 160;

const pb::IntfEntry* AsEntry(const Message& message) {
  if (message.GetDescriptor() != pb::IntfEntry::descriptor()) return nullptr;
  return static_cast<const pb::IntfEntry*>(&message);
}

bool IsState(const Message& message) {
  return message.GetDescriptor() == pb::ShutStateInfo::descriptor() ||
         message.GetDescriptor() == pb::BlockStateInfo::descriptor();
}

std::string NameOf(const Message& message) {
  const pb::IntfEntry* entry = AsEntry(message);
  return entry == nullptr ? "" : " " + Quoted(entry->generalinfo().intf_name(), kNameLimit);
}

// Describes a whole element on one line.
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

// Why the element does not convert, if it is there and does not.
std::optional<Problem> RejectionIn(const Message* element) {
  if (element == nullptr) return std::nullopt;
  zorl2::check::Verdict verdict = zorl2::check::Check(*element);
  // A state alone is no record, but its signal is rejected because of its identifier.
  const FieldDescriptor* id = IdentifierOf(*element->GetDescriptor());
  if (Converts(verdict) && IsState(*element)) {
    verdict = zorl2::check::Check(element->GetReflection()->GetMessage(*element, id));
    verdict.field = id->name();
  }
  if (Converts(verdict)) return std::nullopt;
  return RejectionOf(verdict);
}

void PrintRejection(const ElementChange& change, const Palette& paint, Output& out) {
  const auto print = [&](const Message* element, const char* when) {
    const std::optional<Problem> rejection = RejectionIn(element);
    if (!rejection) return;
    out.Print("{}",
              paint(Colour::kMagenta, fmt::format("  !! {}{}", when, ProblemText(*rejection))));
  };
  if (change.kind != Kind::kRemoved) print(change.after, "");
  if (change.kind != Kind::kAdded) print(change.before, change.after == nullptr ? "" : "before: ");
}

const char* KindName(Kind kind) {
  static const char* const kNames[] = {"added", "removed", "changed"};
  return kNames[static_cast<int>(kind)];
}

Colour ColourOf(Kind kind) {
  static const Colour kColours[] = {Colour::kGreen, Colour::kRed, Colour::kYellow};
  return kColours[static_cast<int>(kind)];
}

// Longer texts are compared line by line.
constexpr std::size_t kTextLimit = 200;

bool IsLong(const FieldChange& field) {
  return field.kind == Kind::kChanged && field.old_value.IsText() && field.new_value.IsText() &&
         std::max(field.old_value.Text().size(), field.new_value.Text().size()) > kTextLimit;
}

std::string FieldLine(const FieldChange& field) {
  std::string before = field.old_value.Line(kTextLimit);
  std::string after = field.new_value.Line(kTextLimit);
  if (before == after) {
    before = field.old_value.Line(kNoLimit);
    after = field.new_value.Line(kNoLimit);
  }
  switch (field.kind) {
    case Kind::kAdded:
      return fmt::format("+ {}: {}", field.path, after);
    case Kind::kRemoved:
      return fmt::format("- {}: {}", field.path, before);
    default:
      return fmt::format("~ {}: {} -> {}", field.path, before, after);
  }
}

void PrintLine(const LineChange& change, const std::string& text, const Palette& paint,
               Output& out) {
  out.Print("        {}\n",
            paint(change.added ? Colour::kGreen : Colour::kRed,
                  fmt::format("{} line {}: {}", change.added ? '+' : '-', change.line, text)));
}

// The lines of a long text that differ; of long lines, the part that differs.
void PrintText(const FieldChange& field, const Palette& paint, Output& out) {
  const std::string before = field.old_value.Text();
  const std::string after = field.new_value.Text();
  out.Print("    {}\n", paint(ColourOf(field.kind), fmt::format("~ {}: {} -> {} bytes", field.path,
                                                                before.size(), after.size())));
  const std::vector<LineChange> changes = CompareLines(before, after);
  for (std::size_t i = 0; i < changes.size(); ++i) {
    const LineChange& change = changes[i];
    const bool replaced = !change.added && i + 1 < changes.size() && changes[i + 1].added;
    if (replaced && std::max(change.text.size(), changes[i + 1].text.size()) > kTextLimit) {
      const Excerpts parts = Differing(change.text, changes[i + 1].text);
      PrintLine(change, parts.before, paint, out);
      PrintLine(changes[++i], parts.after, paint, out);
    } else {
      PrintLine(change, Quoted(change.text, kTextLimit), paint, out);
    }
  }
}

void WriteValue(const char* name, const ValueRef& value, JsonWriter& json) {
  json.Key(name);
  if (value.unknown != nullptr) return WriteJsonValue(*value.unknown, json);
  if (value.parent == nullptr) return json.Null();
  WriteJsonValue(*value.parent, *value.field, value.index, json);
}

void WriteChange(const ElementChange& change, JsonWriter& json) {
  json.BeginObject();
  json.Member("change", KindName(change.kind));
  json.Member("element", change.key);
  const Message& shown = change.after != nullptr ? *change.after : *change.before;
  json.Key("name");
  if (const pb::IntfEntry* entry = AsEntry(shown)) {
    json.Value(entry->generalinfo().intf_name());
  } else {
    json.Null();
  }
  json.Key("fields");
  json.BeginArray();
  for (const FieldChange& field : change.fields) {
    json.BeginObject();
    json.Member("change", KindName(field.kind));
    json.Member("path", field.path);
    WriteValue("old", field.old_value, json);
    WriteValue("new", field.new_value, json);
    json.EndObject();
  }
  json.EndArray();
  json.Key("value");
  if (change.kind == Kind::kChanged) {
    json.Null();
  } else {
    WriteJson(shown, json);
  }
  WriteProblem("rejected_before", RejectionIn(change.before), json);
  WriteProblem("rejected_after", RejectionIn(change.after), json);
  json.EndObject();
}

}  // namespace

ChangesView::ChangesView(Output& out, std::string before, std::string after, bool json,
                         Palette palette)
    : out_(out), before_(std::move(before)), after_(std::move(after)), paint_(palette) {
  if (json) json_.emplace(out, JsonWriter::Layout::kIndented);
}

void ChangesView::Begin() {
  if (std::exchange(begun_, true)) return;
  if (json_) {
    json_->BeginObject();
    json_->Member("schema", "diff/1");
    json_->Member("before", before_);
    json_->Member("after", after_);
    json_->Key("changes");
    json_->BeginArray();
  } else {
    out_.Print("{}\n{}\n\n", paint_(Colour::kRed, "--- " + Printable(before_)),
               paint_(Colour::kGreen, "+++ " + Printable(after_)));
  }
}

void ChangesView::Add(const ElementChange& change) {
  Begin();
  if (json_) {
    WriteChange(change, *json_);
  } else {
    PrintChange(change);
  }
}

void ChangesView::PrintChange(const ElementChange& change) {
  static const char* const kMarks[] = {"+", "-", "~"};
  const Message& shown = change.after != nullptr ? *change.after : *change.before;
  const std::string head = fmt::format("{} {}{}: {}", kMarks[static_cast<int>(change.kind)],
                                       change.key, NameOf(shown), KindName(change.kind));
  out_.Print("{}", paint_(ColourOf(change.kind), head));
  if (change.kind != Kind::kChanged) out_.Print(" ({})", Summary(shown));
  PrintRejection(change, paint_, out_);
  out_.Print("\n");
  for (const FieldChange& field : change.fields) {
    if (IsLong(field)) {
      PrintText(field, paint_, out_);
    } else {
      out_.Print("    {}\n", paint_(ColourOf(field.kind), FieldLine(field)));
    }
  }
}

void ChangesView::Finish(const DiffTotals& totals) {
  if (json_) {
    Begin();
    json_->EndArray();
    json_->Member("equal", totals.equal());
    json_->Member("added", totals.added);
    json_->Member("removed", totals.removed);
    json_->Member("changed", totals.changed);
    json_->Member("same", totals.same);
    json_->EndObject();
  } else if (totals.equal()) {
    out_.Print("no difference in {} element{}\n", totals.same, totals.same == 1 ? "" : "s");
  } else {
    out_.Print("\n{} added, {} removed, {} changed, {} the same\n", totals.added, totals.removed,
               totals.changed, totals.same);
  }
}

}  // namespace zorl2_inspect
