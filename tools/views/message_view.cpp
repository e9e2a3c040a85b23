#include "tools/views/message_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "check/check.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "tools/model/check_text.h"
#include "tools/model/entry_row.h"
#include "tools/model/field_text.h"
#include "tools/model/findings.h"
#include "tools/model/native_fields.h"
#include "tools/model/native_types.h"
#include "tools/model/unknown_fields.h"
#include "tools/text/error.h"
#include "tools/text/quoting.h"
#include "tools/text/table.h"
#include "tools/text/wrap.h"
#include "tools/views/entry_table.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using zorl2::check::Loss;
using zorl2::check::LossKind;
using zorl2::check::Verdict;
using Mark = RowValue::Mark;

constexpr std::size_t kMostUnknown = 1000;
constexpr std::size_t kMostLeaves = 20000;

void PrintTitle(const std::string& text, Output& out, const Palette& palette) {
  out.Print("{}\n", palette(Colour::kBold, text));
}

void PrintUnknown(const Message& message, const Filter& filter, Output& out,
                  const Palette& palette) {
  const std::vector<UnknownValue> unknown = UnknownValues(message, kMostUnknown);
  if (unknown.empty()) return;
  out.Write('\n');
  Table table({"UNKNOWN FIELD", "WIRE TYPE", "VALUE", "KNOWN AS"});
  for (const UnknownValue& value : unknown) {
    table.Add({Cell(filter.PathBefore(value.path), Colour::kYellow), value.wire_type, value.value,
               value.known_as.empty() ? "-" : value.known_as});
  }
  table.Print(out, palette);
  if (unknown.size() < kMostUnknown) return;
  const std::size_t more = CountUnknown(message) - unknown.size();
  if (more > 0) out.Print("and {} more unknown fields\n", more);
}

void PrintRejections(const std::vector<Verdict>& rejections, const Filter& filter, Output& out,
                     const Palette& palette) {
  if (rejections.empty()) return;
  out.Write('\n');
  Table table({"NOT CONVERTED BECAUSE OF", "REASON"});
  table.FitTerminals();
  for (const Verdict& verdict : rejections) {
    table.Add({Cell(filter.PathBefore(verdict.field), Colour::kMagenta), RejectionText(verdict)});
  }
  table.Print(out, palette);
}

// Prints the most serious losses first and only counts the defaults, which do no harm.
void PrintLosses(const std::vector<Loss>& losses, const Filter& filter, Output& out,
                 const Palette& palette) {
  Table table({"NOT KEPT BY THE NATIVE RECORD", "MESSAGE", "BACK FROM NATIVE", "REASON"});
  std::size_t defaults = 0;
  for (const Loss& loss : losses) {
    defaults += loss.kind == LossKind::kDefaulted ? 1 : 0;
    // Unknown fields have a table of their own.
    if (loss.kind == LossKind::kUnknownField || loss.kind == LossKind::kDefaulted) continue;
    table.Add({Cell(filter.PathBefore(loss.field), Colour::kYellow), BeforeText(loss),
               AfterText(loss), LossKindName(loss.kind)});
  }
  if (!table.empty() || defaults > 0) out.Write('\n');
  if (!table.empty()) table.Print(out, palette);
  if (defaults > 0) {
    out.Print("{} absent field{} default value{} (\"zorl2-inspect roundtrip\" lists them)\n",
              defaults, defaults == 1 ? " gets its" : "s get their", defaults == 1 ? "" : "s");
  }
}

// The value of a singular field; "-" if it is absent.
std::string PresentValue(const Message& message, const FieldDescriptor& field) {
  const bool present = message.GetReflection()->HasField(message, &field);
  return present ? ValueText(message, field, -1) : "-";
}

std::string Categories(const pb::IntfCategory& flags) {
  std::string text;
  std::vector<const FieldDescriptor*> fields;
  flags.GetReflection()->ListFields(flags, &fields);
  for (const FieldDescriptor* field : fields) {
    if (!flags.GetReflection()->GetBool(flags, field)) continue;
    text += ' ';
    text += field->name();
  }
  return text.empty() ? " none" : text;
}

void PrintList(const pb::IntfEntryList& list, const std::string& title, const Filter& filter,
               Output& out, const Palette& palette) {
  std::string count = fmt::format("{} ", list.intfentry_size());
  if (!filter.empty()) count += fmt::format("of {} ", filter.last_seen());
  const bool one = list.intfentry_size() == 1 && filter.empty();
  PrintTitle(fmt::format("{}: {}{}", title, count, one ? "entry" : "entries"), out, palette);
  const pb::InformationClient& client = list.infoclient();
  const std::string text =
      fmt::format("for client {:#x}, protocol {}, token {}, categories{}", client.clientaddress(),
                  PresentValue(client, *client.GetDescriptor()->FindFieldByNumber(
                                           pb::InformationClient::kProtocolTypeFieldNumber)),
                  Quoted(client.token(), 40), Categories(client.intfcategory()));
  const std::size_t width = out.width() == 0 ? text.size() + 1 : out.width();
  for (const std::string& line : Wrap(text, width, width)) out.Print("{}\n", line);
  out.Write('\n');
  Table table = EntryTable();
  Legend legend;
  for (const pb::IntfEntry& entry : list.intfentry()) {
    const EntryRow row = MakeEntryRow(entry);
    AddRow(row, table);
    legend.Add(row);
  }
  if (!table.empty()) table.Print(out, palette);
  legend.Print(out);
  PrintLeftOut(table, out);
}

Mark MarkOf(const pb::Zorid& id) {
  if (id.value_size() != 4) return Mark::kRejected;
  return zorl2::check::FindLosses(id).empty() ? Mark::kNone : Mark::kLost;
}

// The key of an identifier among the fields of the native signal.
std::string NativeKey(const pb::Zorid& id) {
  zorid_t native;
  for (int octet = 0; octet < std::min(id.value_size(), 4); ++octet) {
    native.octets[octet] = static_cast<std::uint8_t>(id.value(octet));
  }
  return DottedText(native);
}

// One line for each element of a state signal, with the native state of its interface.
template <typename Signal>
void PrintSignal(const Signal& signal, const Filter& filter, Output& out, const Palette& palette) {
  const Verdict verdict = zorl2::check::Check(signal);
  std::map<std::string, std::string> native;
  if (Converts(verdict)) {
    for (PathValue& field : FindNativeType(*Signal::descriptor())->fields(signal))
      native[field.path] = std::move(field.value);
  }
  const FieldDescriptor* protocol = Signal::descriptor()->FindFieldByNumber(1);
  const bool rejected = verdict.field == protocol->name();
  Legend legend;
  if (rejected) legend.Add(Mark::kRejected);
  out.Print("protocol {}{}, native {}\n\n", PresentValue(signal, *protocol), rejected ? "!!" : "",
            Converts(verdict) ? native["protocol"] : "-");
  Table table({">#", "INTERFACE", "MESSAGE", "NATIVE RECORD"});
  for (int i = 0; i < signal.intfs_size(); ++i) {
    const auto& info = signal.intfs(i);
    const std::string state = Converts(verdict) ? native[NativeKey(info.zorid())] : "-";
    const bool held = state == "shut" || state == "BLOCK_STATE_BLOCK";
    const Mark mark = MarkOf(info.zorid());
    legend.Add(mark);
    table.Add({fmt::format("{}", filter.IndexBefore(i)),
               Marked(info.has_zorid() ? DottedText(info.zorid()) : "-", mark),
               PresentValue(info, *info.GetDescriptor()->FindFieldByNumber(2)),
               Cell(state, held ? Colour::kRed : Colour::kGreen)});
  }
  if (!table.empty()) table.Print(out, palette);
  legend.Print(out);
}

// The fields of the message and of the native record, if it converts.
void PrintFields(const Message& message, Output& out, const Palette& palette) {
  const NativeType* type = FindNativeType(*message.GetDescriptor());
  const bool converts = type != nullptr && Converts(zorl2::check::Check(message));
  std::vector<PathValue> native;
  if (converts) native = type->fields(message);
  std::map<std::string, std::string> by_path;
  for (const PathValue& field : native) by_path[field.path] = field.value;
  Table table({"FIELD", "MESSAGE", "NATIVE RECORD"});
  const std::vector<PathValue> leaves = Leaves(message, kMostLeaves);
  for (const PathValue& leaf : leaves) {
    const auto found = by_path.find(leaf.path);
    const std::string native_value = found == by_path.end() ? (converts ? "-" : "") : found->second;
    const bool differs = converts && native_value != leaf.value;
    table.Add(
        {leaf.path, leaf.value, Cell(native_value, differs ? Colour::kCyan : Colour::kPlain)});
    by_path.erase(leaf.path);
  }
  // Fields that only the record has.
  for (const PathValue& field : native) {
    if (by_path.count(field.path) == 0) continue;
    table.Add({field.path, "(absent)", Cell(field.value, Colour::kCyan)});
  }
  if (table.empty()) {
    out.Write("(no fields)\n");
  } else {
    table.Print(out, palette);
  }
  if (leaves.size() == kMostLeaves) {
    out.Print("only the first {} fields are shown (--output text shows all)\n", kMostLeaves);
  }
}

}  // namespace

void PrintMessage(const Message& message, const std::string& title, const Filter& filter,
                  Output& out, const Palette& palette) {
  const auto* type = message.GetDescriptor();
  if (type == pb::IntfEntryList::descriptor()) {
    PrintList(static_cast<const pb::IntfEntryList&>(message), title, filter, out, palette);
  } else {
    PrintTitle(title, out, palette);
    if (type == pb::ShutStateSync::descriptor()) {
      PrintSignal(static_cast<const pb::ShutStateSync&>(message), filter, out, palette);
    } else if (type == pb::BlockStateSync::descriptor()) {
      PrintSignal(static_cast<const pb::BlockStateSync&>(message), filter, out, palette);
    } else {
      if (type == pb::IntfEntry::descriptor()) {
        Table table = EntryTable();
        const EntryRow row = MakeEntryRow(static_cast<const pb::IntfEntry&>(message));
        AddRow(row, table);
        table.Print(out, palette);
        Legend legend;
        legend.Add(row);
        legend.Print(out);
        PrintLeftOut(table, out);
        out.Write('\n');
      }
      PrintFields(message, out, palette);
    }
  }
  PrintNotKept(message, filter, out, palette);
}

void PrintNotKept(const Message& message, const Filter& filter, Output& out,
                  const Palette& palette) {
  const Findings findings = FindAll(message);
  PrintRejections(findings.rejections, filter, out, palette);
  PrintLosses(findings.losses, filter, out, palette);
  PrintUnknown(message, filter, out, palette);
}

void PrintNative(const Message& message, Output& out) {
  bool any = false;
  ForEachNative(message, [&](const std::string& path, const NativeType& type, const Message& part) {
    any = true;
    out.Print("{}{}{}\n", path, path.empty() ? "" : ": ", type.record);
    const Verdict verdict = zorl2::check::Check(part);
    if (!Converts(verdict)) {
      out.Print("  not converted: {}\n", ProblemText(RejectionOf(verdict)));
      return;
    }
    for (const PathValue& field : type.fields(part)) {
      out.Print("  {}: {}\n", field.path, field.value);
    }
  });
  if (!any) out.Print("{}: no native record\n", message.GetDescriptor()->name());
}

}  // namespace zorl2_inspect
