#include "tools/views/message_view.h"

#include <fmt/format.h>

#include <map>
#include <utility>
#include <vector>

#include "check/check.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "tools/model/check_text.h"
#include "tools/model/entry_row.h"
#include "tools/model/field_text.h"
#include "tools/model/native_fields.h"
#include "tools/model/native_types.h"
#include "tools/model/unknown_fields.h"
#include "tools/text/quoting.h"
#include "tools/text/table.h"
#include "tools/views/entry_table.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using zorl2::check::Loss;
using zorl2::check::LossKind;

constexpr std::size_t kMostLosses = 20;
constexpr std::size_t kMostLeaves = 20000;

void PrintTitle(const std::string& text, Output& out, const Palette& palette) {
  out.Print("{}\n", palette(Colour::kBold, text));
}

void PrintUnknown(const Message& message, const Filter& filter, Output& out,
                  const Palette& palette) {
  const std::vector<UnknownValue> unknown = UnknownValues(message);
  if (unknown.empty()) return;
  out.Write('\n');
  Table table({"UNKNOWN FIELD", "WIRE TYPE", "VALUE", "KNOWN AS"});
  for (const UnknownValue& value : unknown) {
    table.Add({Cell(filter.PathBefore(value.path), Colour::kYellow), value.wire_type, value.value,
               value.known_as.empty() ? "-" : value.known_as});
  }
  table.Print(out, palette);
}

void PrintLosses(const Message& message, const Filter& filter, Output& out,
                 const Palette& palette) {
  Table table({"NOT KEPT BY THE NATIVE RECORD", "MESSAGE", "BACK FROM NATIVE", "REASON"});
  std::size_t more = 0;
  for (const Loss& loss : zorl2::check::FindLosses(message)) {
    // They have a table of their own.
    if (loss.kind == LossKind::kUnknownField) continue;
    if (table.size() == kMostLosses) {
      ++more;
      continue;
    }
    table.Add({Cell(filter.PathBefore(loss.field), Colour::kYellow), BeforeText(loss),
               AfterText(loss), LossKindName(loss.kind)});
  }
  if (table.empty()) return;
  out.Write('\n');
  table.Print(out, palette);
  if (more > 0) out.Print("and {} more; \"zorl2-inspect roundtrip\" lists all\n", more);
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
  out.Print("for client {:#x}, protocol {}, token {}, categories{}\n\n", client.clientaddress(),
            pb::ProtocolType_Name(client.protocoltype()), Quoted(client.token(), 40),
            Categories(client.intfcategory()));
  Table table = EntryTable();
  for (const pb::IntfEntry& entry : list.intfentry()) AddRow(MakeEntryRow(entry), table);
  if (!table.empty()) table.Print(out, palette);
}

// One line for each element of a state signal, with the native state of its interface.
template <typename Signal>
void PrintSignal(const Signal& signal, const Filter& filter, Output& out, const Palette& palette) {
  std::map<std::string, std::string> native;
  for (PathValue& field : FindNativeType(*Signal::descriptor())->fields(signal))
    native[field.path] = std::move(field.value);
  const FieldDescriptor* protocol = Signal::descriptor()->FindFieldByNumber(1);
  out.Print("protocol {}, native {}\n\n", ValueText(signal, *protocol, -1), native["protocol"]);
  Table table({">#", "INTERFACE", "MESSAGE", "NATIVE RECORD"});
  for (int i = 0; i < signal.intfs_size(); ++i) {
    const auto& info = signal.intfs(i);
    zorid_t id;
    for (int octet = 0; octet < 4; ++octet) {
      id.octets[octet] = static_cast<std::uint8_t>(info.zorid().value(octet));
    }
    const std::string& state = native[DottedText(id)];
    const bool held = state == "shut" || state == "BLOCK_STATE_BLOCK";
    table.Add({fmt::format("{}", filter.IndexBefore(i)), DottedText(info.zorid()),
               ValueText(info, *info.GetDescriptor()->FindFieldByNumber(2), -1),
               Cell(state, held ? Colour::kRed : Colour::kGreen)});
  }
  if (!table.empty()) table.Print(out, palette);
}

// The fields of the message and of the native record.
void PrintFields(const Message& message, Output& out, const Palette& palette) {
  const NativeType* type = FindNativeType(*message.GetDescriptor());
  const bool converts = type != nullptr;
  std::vector<PathValue> native;
  if (converts) native = type->fields(message);
  std::map<std::string, std::string> by_path;
  for (const PathValue& field : native) by_path[field.path] = field.value;
  Table table({"FIELD", "MESSAGE", "NATIVE RECORD"});
  for (const PathValue& leaf : Leaves(message, kMostLeaves)) {
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
        AddRow(MakeEntryRow(static_cast<const pb::IntfEntry&>(message)), table);
        table.Print(out, palette);
        out.Write('\n');
      }
      PrintFields(message, out, palette);
    }
  }
  PrintNotKept(message, filter, out, palette);
}

void PrintNotKept(const Message& message, const Filter& filter, Output& out,
                  const Palette& palette) {
  PrintLosses(message, filter, out, palette);
  PrintUnknown(message, filter, out, palette);
}

void PrintNative(const Message& message, Output& out) {
  bool any = false;
  ForEachNative(message, [&](const std::string& path, const NativeType& type, const Message& part) {
    any = true;
    out.Print("{}{}{}\n", path, path.empty() ? "" : ": ", type.record);
    for (const PathValue& field : type.fields(part)) {
      out.Print("  {}: {}\n", field.path, field.value);
    }
  });
  if (!any) out.Print("{}: no native record\n", message.GetDescriptor()->name());
}

}  // namespace zorl2_inspect
