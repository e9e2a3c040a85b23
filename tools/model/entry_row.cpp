#include "tools/model/entry_row.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "tools/model/check_text.h"
#include "tools/model/field_path.h"
#include "tools/model/field_text.h"
#include "tools/model/findings.h"
#include "tools/model/native_fields.h"
#include "tools/model/unknown_fields.h"
#include "tools/text/error.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using Mark = RowValue::Mark;
using zorl2::check::LossKind;

constexpr std::size_t kLongestName = 40;
constexpr std::size_t kMostNames = 4;
constexpr std::size_t kMostUnknown = 1000;

RowValue Identifier(bool present, const pb::Zorid& id) {
  std::string text = DottedText(id);
  if (!present || text == "0.0.0.0") return {"-"};
  return {std::move(text)};
}

// Quotes a name that could move the cursor.
std::string NameText(const pb::IntfEntry& entry) {
  const std::string& name = entry.generalinfo().intf_name();
  return name.empty() ? "-" : QuotedUnlessPlain(name, kLongestName);
}

RowValue Type(const pb::IntfEntry& entry) {
  if (!entry.typeinfo().has_interfacetype()) return {"-"};
  switch (entry.typeinfo().interfacetype()) {
    case pb::OTHER:
      return {"other"};
    case pb::ETHERNET:
      return {"ethernet"};
    case pb::ETHERNET_L2_VLAN:
      return {"vlan"};
    case pb::ETHERNET_BUNDLE:
      return {"bundle"};
    default:
      return {"unknown", Mark::kUnusual};
  }
}

RowValue Up(bool present, bool up) {
  if (!present) return {"-"};
  return up ? RowValue{"up", Mark::kGood} : RowValue{"down", Mark::kBad};
}

// The first protocols, then how many there are.
RowValue Protocols(const std::vector<std::string>& names, bool holds) {
  if (names.empty()) return {"-"};
  std::string text;
  for (std::size_t i = 0; i < names.size() && i < kMostNames; ++i) {
    text += (i > 0 ? ", " : "") + names[i];
  }
  if (names.size() > kMostNames) text += fmt::format(", ... ({})", names.size());
  return {std::move(text), holds ? Mark::kBad : Mark::kNone};
}

RowValue ShutBy(const pb::IntfEntry& entry) {
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(entry.shutdownprotos_size()));
  for (int i = 0; i < entry.shutdownprotos_size(); ++i) {
    names.push_back(pb::ProtocolType_Name(entry.shutdownprotos(i)));
  }
  return Protocols(names, true);
}

RowValue States(const pb::IntfEntry& entry) {
  std::vector<std::string> names;
  bool blocked = false;
  for (const pb::BlockInfo& info : entry.blockinfo()) {
    const bool blocks = info.state() == pb::BLOCK_STATE_BLOCK;
    blocked |= blocks;
    names.push_back(pb::ProtocolType_Name(info.protocol()) + (blocks ? " blocks" : " forwards"));
  }
  return Protocols(names, blocked);
}

// Whether a path is that of the column or of a part of it.
bool IsIn(std::string_view path, std::string_view column) {
  if (path.substr(0, column.size()) != column) return false;
  return path.size() == column.size() || path[column.size()] == '.' || path[column.size()] == '[';
}

// How the conversion fails to keep the shown field. Sets `seen` for the losses that belong to it.
Mark MarkOf(const EntryRow& row, const ShownField& field, std::vector<bool>& seen) {
  if (!Converts(row.verdict)) {
    return IsIn(WithoutIndices(row.verdict.field), field.path) ? Mark::kRejected : Mark::kNone;
  }
  Mark mark = Mark::kNone;
  for (std::size_t i = 0; i < row.losses.size(); ++i) {
    const zorl2::check::Loss& loss = row.losses[i];
    if (loss.kind == LossKind::kDefaulted) break;
    if (!IsIn(WithoutIndices(loss.field), field.path) && loss.field != field.unlisted) continue;
    mark = Mark::kLost;
    seen[i] = true;
  }
  return mark;
}

// The unlisted value of a required field, which the parser keeps among the unknown fields.
std::string UnlistedValue(const google::protobuf::Message& message, const std::string& path) {
  for (const UnknownValue& value : UnknownValues(message, kMostUnknown)) {
    if (value.path == path) return value.value;
  }
  return "-";
}

std::string ProblemOf(const EntryRow& row, const std::vector<bool>& seen) {
  if (!Converts(row.verdict)) return ProblemText(RejectionOf(row.verdict));
  std::string text;
  std::size_t count = 0;
  for (std::size_t i = 0; i < row.losses.size(); ++i) {
    if (row.losses[i].kind == LossKind::kDefaulted) break;
    if (seen[i] || count++ >= kMostNames) continue;
    text += (text.empty() ? "not kept: " : ", ") + row.losses[i].field;
  }
  if (count > kMostNames) text += fmt::format(", ... ({})", count);
  return text;
}

}  // namespace

const std::vector<EntryColumn>& EntryColumns() {
  using Entry = pb::IntfEntry;
  static const std::vector<EntryColumn> columns = {
      {"ID", false, "zorid",
       [](const Entry& e) { return RowValue{e.has_zorid() ? DottedText(e.zorid()) : "-"}; }},
      {"PARENT", false, "parent",
       [](const Entry& e) { return Identifier(e.has_parent(), e.parent()); }},
      {"NAME", false, "generalInfo.intf_name",
       [](const Entry& e) { return RowValue{NameText(e)}; }},
      {"TYPE", false, "typeInfo.interfaceType", Type},
      {"CATEGORY", false, "intfCategory",
       [](const Entry& e) {
         if (!e.has_intfcategory()) return RowValue{"-"};
         return RowValue{pb::InterfaceCategory_Name(e.intfcategory())};
       }},
      {"ADMIN", false, "statusInfo.adminStatus",
       [](const Entry& e) {
         return Up(e.statusinfo().has_adminstatus(),
                   e.statusinfo().adminstatus() == pb::IF_ADMIN_UP);
       }},
      {"OPER", false, "statusInfo.operationalStatus",
       [](const Entry& e) {
         return Up(e.statusinfo().has_operationalstatus(),
                   e.statusinfo().operationalstatus() == pb::UP);
       }},
      {"LINK", false, "statusInfo.linkStatus",
       [](const Entry& e) {
         return Up(e.statusinfo().has_linkstatus(), e.statusinfo().linkstatus() == pb::LINK_UP);
       }},
      {"SPEED", true, "statusInfo.operationalSpeed",
       [](const Entry& e) { return RowValue{RateText(e.statusinfo().operationalspeed())}; }},
      {"MTU", true, "physicalInfo.intf_mtu",
       [](const Entry& e) {
         if (!e.physicalinfo().has_intf_mtu()) return RowValue{"-"};
         return RowValue{fmt::format("{}", e.physicalinfo().intf_mtu())};
       }},
      {"SHUT BY", false, "shutdownProtos", ShutBy},
      {"STATE BY PROTOCOL", false, "blockInfo", States},
  };
  return columns;
}

ShownField::ShownField(const FieldPath& shown) : path(WithoutIndices(shown.text())) {
  const std::size_t dot = path.rfind('.');
  unlisted = path.substr(0, dot == path.npos ? 0 : dot + 1);
  unlisted += fmt::format("#{}", shown.field().number());
}

EntryRow MakeRow(const google::protobuf::Message& message, const std::vector<ShownField>& fields,
                 std::vector<RowValue> values) {
  EntryRow row{zorl2::check::Check(message), FindLossesBriefly(message), std::move(values), {}};
  std::vector<bool> seen(row.losses.size());
  for (std::size_t i = 0; i < fields.size(); ++i) {
    RowValue& value = row.values[i];
    const Mark mark = MarkOf(row, fields[i], seen);
    if (mark != Mark::kNone) value.mark = mark;
    if (mark == Mark::kRejected && value.text == "-") {
      value.text = UnlistedValue(message, fields[i].unlisted);
    }
  }
  row.problem = ProblemOf(row, seen);
  return row;
}

EntryRow MakeEntryRow(const pb::IntfEntry& entry) {
  static const std::vector<ShownField> fields = [] {
    std::vector<ShownField> shown;
    shown.reserve(EntryColumns().size());
    for (const EntryColumn& column : EntryColumns()) {
      shown.emplace_back(FieldPath(*pb::IntfEntry::descriptor(), column.path));
    }
    return shown;
  }();
  std::vector<RowValue> values;
  values.reserve(EntryColumns().size());
  for (const EntryColumn& column : EntryColumns()) values.push_back(column.value(entry));
  return MakeRow(entry, fields, std::move(values));
}

}  // namespace zorl2_inspect
