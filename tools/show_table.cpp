#include "tools/show_table.h"

#include <fmt/format.h>

#include <map>
#include <memory>
#include <utility>

#include "convert/intf_entry_converter.h"
#include "tools/conversion.h"
#include "tools/field_text.h"
#include "tools/losses.h"
#include "tools/message_types.h"
#include "tools/native_numbers.h"
#include "tools/native_view.h"
#include "tools/plain_text.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;

// So many losses are listed; "roundtrip" lists all.
constexpr std::size_t kMostLosses = 20;
// So many leaves of one message are listed.
constexpr std::size_t kMostLeaves = 20000;

Cell TypeCell(::IntfEntry::InterfaceType type) {
  switch (type) {
    case ::IntfEntry::OTHER:
      return "other";
    case ::IntfEntry::ETHERNET:
      return "ethernet";
    case ::IntfEntry::ETHERNET_L2_VLAN:
      return "vlan";
    case ::IntfEntry::ETHERNET_BUNDLE:
      return "bundle";
    default:
      return {"unknown", Colour::kYellow};
  }
}

Cell UpCell(bool up) { return up ? Cell("up", Colour::kGreen) : Cell("down", Colour::kRed); }

// A name of a capture must not move the cursor: it is shown as it is only when it is plain.
std::string Plain(const std::string& text) {
  std::string quoted = Quoted(text, 40);
  if (quoted.size() == text.size() + 2 && text.find(' ') == text.npos)
    return text.empty() ? "-" : text;
  return quoted;
}

// The first protocols, then their number.
std::string Shortened(const std::vector<std::string>& names) {
  if (names.empty()) return "-";
  std::string text;
  for (std::size_t i = 0; i < names.size() && i < 4; ++i) {
    if (i > 0) text += ", ";
    text += names[i];
  }
  if (names.size() > 4) text += fmt::format(", ... ({})", names.size());
  return text;
}

void PrintTitle(const std::string& text, std::FILE* out, const Palette& palette) {
  std::fprintf(out, "%s\n", palette(Colour::kBold, text).c_str());
}

void PrintUnknown(const Message& message, std::FILE* out, const Palette& palette) {
  const std::vector<UnknownValue> unknown = UnknownValues(message);
  if (unknown.empty()) return;
  std::fprintf(out, "\n");
  Table table({"UNKNOWN FIELD", "WIRE TYPE", "VALUE", "KNOWN AS"});
  for (const UnknownValue& value : unknown) {
    table.Add({Cell(value.path, Colour::kYellow), value.wire_type, value.value,
               value.known_as.empty() ? "-" : value.known_as});
  }
  table.Print(out, palette);
}

void PrintLosses(const Message& message, std::FILE* out, const Palette& palette) {
  const std::unique_ptr<Message> after = NewMessage(*message.GetDescriptor());
  if (!ThereAndBack(message, *after)) return;
  const std::vector<Loss> losses = FindLosses(message, *after);
  if (losses.empty()) return;
  std::fprintf(out, "\n");
  Table table({"NOT KEPT BY THE NATIVE RECORD", "MESSAGE", "BACK FROM NATIVE", "REASON"});
  for (std::size_t i = 0; i < losses.size() && i < kMostLosses; ++i) {
    table.Add({Cell(losses[i].path, Colour::kYellow), losses[i].before, losses[i].after,
               losses[i].reason});
  }
  table.Print(out, palette);
  if (losses.size() > kMostLosses) {
    std::fprintf(out, "and %zu more; \"zorl2-inspect roundtrip\" lists them all\n",
                 losses.size() - kMostLosses);
  }
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

void PrintList(const pb::IntfEntryList& list, const std::string& title, std::FILE* out,
               const Palette& palette) {
  PrintTitle(fmt::format("{}: {} {}", title, list.intfentry_size(),
                         list.intfentry_size() == 1 ? "entry" : "entries"),
             out, palette);
  const pb::InformationClient& client = list.infoclient();
  std::fprintf(out, "for client 0x%llx, protocol %s, token %s, categories%s\n\n",
               static_cast<unsigned long long>(client.clientaddress()),
               pb::ProtocolType_Name(client.protocoltype()).c_str(),
               Quoted(client.token(), 40).c_str(), Categories(client.intfcategory()).c_str());
  Table table = EntryTable();
  for (const pb::IntfEntry& entry : list.intfentry()) AddEntry(entry, table);
  if (!table.empty()) table.Print(out, palette);
}

// A state signal: one line for each element, and what the record holds for its interface.
template <typename Signal>
void PrintSignal(const Signal& signal, std::FILE* out, const Palette& palette) {
  std::map<std::string, std::string> native;
  for (PathValue& field : NativeFields(signal)) native[field.path] = std::move(field.value);
  const FieldDescriptor* protocol = Signal::descriptor()->FindFieldByNumber(1);
  std::fprintf(out, "protocol %s, native %s\n\n", ValueText(signal, *protocol, -1).c_str(),
               native["protocol"].c_str());
  Table table({">#", "INTERFACE", "MESSAGE", "NATIVE RECORD"});
  for (int i = 0; i < signal.intfs_size(); ++i) {
    const auto& info = signal.intfs(i);
    zorid_t id;
    for (int octet = 0; octet < 4; ++octet) {
      id.octets[octet] = static_cast<std::uint8_t>(info.zorid().value(octet));
    }
    const std::string& state = native[DottedText(id)];
    const bool held = state == "shut" || state == "BLOCK_STATE_BLOCK";
    table.Add({fmt::format("{}", i), DottedText(info.zorid()),
               ValueText(info, *info.GetDescriptor()->FindFieldByNumber(2), -1),
               Cell(state, held ? Colour::kRed : Colour::kGreen)});
  }
  if (!table.empty()) table.Print(out, palette);
}

// Message and native record side by side.
void PrintFields(const Message& message, std::FILE* out, const Palette& palette) {
  const bool converts = HasConverter(*message.GetDescriptor());
  std::vector<PathValue> native;
  if (converts) native = NativeFields(message);
  std::map<std::string, std::string> by_path;
  for (const PathValue& field : native) by_path[field.path] = field.value;
  Table table({"FIELD", "MESSAGE", "NATIVE RECORD"});
  for (const PathValue& leaf : Leaves(message, kMostLeaves)) {
    const auto found = by_path.find(leaf.path);
    const std::string beside = found == by_path.end() ? (converts ? "-" : "") : found->second;
    const bool differs = converts && beside != leaf.value;
    table.Add({leaf.path, leaf.value, Cell(beside, differs ? Colour::kCyan : Colour::kPlain)});
    by_path.erase(leaf.path);
  }
  // What only the record has: it cannot say that there is none.
  for (const PathValue& field : native) {
    if (by_path.count(field.path) == 0) continue;
    table.Add({field.path, "(absent)", Cell(field.value, Colour::kCyan)});
  }
  if (table.empty()) {
    std::fprintf(out, "(no fields)\n");
  } else {
    table.Print(out, palette);
  }
}

void AppendNative(const Message& message, const std::string& path, std::string& text) {
  if (HasConverter(*message.GetDescriptor())) {
    text += fmt::format("{}{}{}\n", path, path.empty() ? "" : ": ",
                        NativeRecordName(*message.GetDescriptor()));
    for (const PathValue& field : NativeFields(message)) {
      text += fmt::format("  {}: {}\n", field.path, field.value);
    }
    return;
  }
  std::vector<const FieldDescriptor*> fields;
  const Reflection& reflection = *message.GetReflection();
  reflection.ListFields(message, &fields);
  for (const FieldDescriptor* field : fields) {
    if (field->cpp_type() != FieldDescriptor::CPPTYPE_MESSAGE) continue;
    const std::string name = Join(path, field->name());
    if (!field->is_repeated()) {
      AppendNative(reflection.GetMessage(message, field), name, text);
      continue;
    }
    for (int i = 0; i < reflection.FieldSize(message, field); ++i) {
      AppendNative(reflection.GetRepeatedMessage(message, field, i), At(name, i), text);
    }
  }
}

}  // namespace

Table EntryTable() {
  return Table({"ID", "PARENT", "NAME", "TYPE", "CATEGORY", "ADMIN", "OPER", "LINK", ">SPEED",
                ">MTU", "SHUT BY", "STATE BY PROTOCOL"});
}

void AddEntry(const pb::IntfEntry& message, Table& table) {
  ::IntfEntry entry;
  IntfEntryConverter().Convert(message, entry);
  const ::IntfEntry::StatusInfo& status = entry.getStatusInfo();
  std::vector<std::string> shut;
  for (const ProtocolType protocol : entry.getShutdownProtos()) {
    shut.push_back(NativeProtocolName(protocol));
  }
  std::vector<std::string> states;
  bool blocked = false;
  for (const ::IntfEntry::BlockInfo& block : entry.getBlockInfo()) {
    const bool blocks = block.state == BLOCK_STATE_BLOCK;
    blocked = blocked || blocks;
    states.push_back(NativeProtocolName(block.protocol) + (blocks ? " blocks" : " forwards"));
  }
  const bool has_parent = ZoridNumber(entry.getParent()) != 0;
  table.Add({DottedText(entry.getId()), has_parent ? DottedText(entry.getParent()) : "-",
             Plain(entry.getGeneralInfo().intf_name), TypeCell(entry.getTypeInfo().interfaceType),
             pb::InterfaceCategory_Name(message.intfcategory()),
             UpCell(status.adminStatus == ::IntfEntry::IF_ADMIN_UP),
             UpCell(status.operationalStatus == ::IntfEntry::UP),
             UpCell(status.linkStatus == ::IntfEntry::LINK_UP), RateText(status.operationalSpeed),
             fmt::format("{}", entry.getPhysicalInfo().intf_mtu),
             Cell(Shortened(shut), shut.empty() ? Colour::kPlain : Colour::kRed),
             Cell(Shortened(states), blocked ? Colour::kRed : Colour::kPlain)});
}

void PrintMessage(const Message& message, const std::string& title, std::FILE* out,
                  const Palette& palette) {
  const auto* type = message.GetDescriptor();
  if (type == pb::IntfEntryList::descriptor()) {
    PrintList(static_cast<const pb::IntfEntryList&>(message), title, out, palette);
  } else {
    PrintTitle(title, out, palette);
    if (type == pb::ShutStateSync::descriptor()) {
      PrintSignal(static_cast<const pb::ShutStateSync&>(message), out, palette);
    } else if (type == pb::BlockStateSync::descriptor()) {
      PrintSignal(static_cast<const pb::BlockStateSync&>(message), out, palette);
    } else {
      if (type == pb::IntfEntry::descriptor()) {
        Table table = EntryTable();
        AddEntry(static_cast<const pb::IntfEntry&>(message), table);
        table.Print(out, palette);
        std::fprintf(out, "\n");
      }
      PrintFields(message, out, palette);
    }
  }
  PrintLosses(message, out, palette);
  PrintUnknown(message, out, palette);
}

std::string NativeText(const Message& message) {
  std::string text;
  AppendNative(message, "", text);
  if (text.empty()) {
    text = fmt::format("{}: no native record\n", message.GetDescriptor()->name());
  }
  return text;
}

}  // namespace zorl2_inspect
