#include "check/internal/rules.h"

#include <google/protobuf/unknown_field_set.h>

#include <iterator>
#include <optional>
#include <utility>

namespace zorl2::check::internal {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::EnumDescriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::UnknownField;

std::string UnlistedText(int value, int first, int last) {
  return "unlisted value " + std::to_string(value) + " (listed: " + std::to_string(first) + " to " +
         std::to_string(last) + ")";
}

// The unlisted number that a parser moved from the field to the unknown fields.
std::optional<int> UnlistedNumber(const Message& message, const FieldDescriptor& field) {
  if (field.cpp_type() != FieldDescriptor::CPPTYPE_ENUM) return std::nullopt;
  const auto& unknown = message.GetReflection()->GetUnknownFields(message);
  for (int i = unknown.field_count() - 1; i >= 0; --i) {
    const UnknownField& candidate = unknown.field(i);
    if (candidate.number() != field.number()) continue;
    if (candidate.type() != UnknownField::TYPE_VARINT) continue;
    const int value = static_cast<int>(candidate.varint());
    if (field.enum_type()->FindValueByNumber(value) == nullptr) return value;
  }
  return std::nullopt;
}

// A field whose value must be listed, 0 to `last`.
struct EnumerationField {
  std::string_view rule;
  const char* path;
  int last;
  int (*in_message)(const pb::IntfEntry&);
  int (*in_record)(const IntfEntry&);
};

constexpr std::string_view kEnum = "enum.unlisted";
constexpr std::string_view kCategory = "category.unlisted";

// In the order in which the converter reads them.
constexpr EnumerationField kEnumerationFields[] = {
    {kEnum, "statusInfo.adminStatus", pb::AdminStatus_MAX,
     [](const pb::IntfEntry& m) -> int { return m.statusinfo().adminstatus(); },
     [](const IntfEntry& r) -> int { return r.getStatusInfo().adminStatus; }},
    {kEnum, "statusInfo.operationalStatus", pb::OperationalStatus_MAX,
     [](const pb::IntfEntry& m) -> int { return m.statusinfo().operationalstatus(); },
     [](const IntfEntry& r) -> int { return r.getStatusInfo().operationalStatus; }},
    {kEnum, "statusInfo.linkStatus", pb::LinkStatus_MAX,
     [](const pb::IntfEntry& m) -> int { return m.statusinfo().linkstatus(); },
     [](const IntfEntry& r) -> int { return r.getStatusInfo().linkStatus; }},
    {kEnum, "physicalInfo.eth_speed", pb::EthernetSpeed_MAX,
     [](const pb::IntfEntry& m) -> int { return m.physicalinfo().eth_speed(); },
     [](const IntfEntry& r) -> int { return r.getPhysicalInfo().eth_speed; }},
    {kEnum, "physicalInfo.eth_duplex_mode", pb::EthernetDuplexMode_MAX,
     [](const pb::IntfEntry& m) -> int { return m.physicalinfo().eth_duplex_mode(); },
     [](const IntfEntry& r) -> int { return r.getPhysicalInfo().eth_duplex_mode; }},
    {kEnum, "typeInfo.interfaceType", pb::InterfaceType_MAX,
     [](const pb::IntfEntry& m) -> int { return m.typeinfo().interfacetype(); },
     [](const IntfEntry& r) -> int { return r.getTypeInfo().interfaceType; }},
    {kEnum, "typeInfo.vlanType", pb::VlanType_MAX,
     [](const pb::IntfEntry& m) -> int { return m.typeinfo().vlantype(); },
     [](const IntfEntry& r) -> int { return r.getTypeInfo().vlanType; }},
    {kCategory, "intfCategory", pb::InterfaceCategory_MAX,
     [](const pb::IntfEntry& m) -> int { return m.intfcategory(); },
     [](const IntfEntry& r) -> int { return r.getInterfaceCategory(); }},
};

template <auto kValue, std::size_t kIndex, typename Entry>
bool IsListed(const Entry& entry) {
  constexpr EnumerationField kField = kEnumerationFields[kIndex];
  const int value = (kField.*kValue)(entry);
  return value >= 0 && value <= kField.last;
}

// A fold over the rows, so that the compiler inlines the access to each field.
template <auto kValue, typename Entry, std::size_t... kIndices>
Verdict CheckEnumerationsOf(const Entry& entry, std::index_sequence<kIndices...>) {
  std::size_t failed = 0;
  if (((failed = kIndices, IsListed<kValue, kIndices>(entry)) && ...)) return {};
  const EnumerationField& field = kEnumerationFields[failed];
  return {Outcome::kThrows, field.rule, field.path,
          UnlistedText((field.*kValue)(entry), 0, field.last)};
}

using EveryField = std::make_index_sequence<std::size(kEnumerationFields)>;

}  // namespace

Verdict MissingField(const Message& message, const FieldDescriptor& field) {
  std::string reason = "missing";
  if (const std::optional<int> value = UnlistedNumber(message, field)) {
    const EnumDescriptor& type = *field.enum_type();
    reason =
        UnlistedText(*value, type.value(0)->number(), type.value(type.value_count() - 1)->number());
  }
  return {Outcome::kReturnsFalse, "required", field.name(),
          reason + ", required by " + message.GetDescriptor()->name()};
}

Verdict WrongSize(Outcome outcome, std::string field, int values) {
  return {outcome, "identifier.size", std::move(field),
          std::to_string(values) + (values == 1 ? " value" : " values") + " (expected " +
              std::to_string(kOctets) + ")"};
}

Verdict RejectIdentifier(int values) { return WrongSize(Outcome::kReturnsFalse, "value", values); }

Verdict RejectOperation(int lag_values, int member_values) {
  for (const bool is_lag : {true, false}) {
    if ((is_lag ? lag_values : member_values) != kAbsent) continue;
    return {Outcome::kReturnsFalse, "identifier.missing", is_lag ? "lag" : "member",
            "missing (expected 4 values)"};
  }
  return lag_values != kOctets ? WrongSize(Outcome::kReturnsFalse, "lag", lag_values)
                               : WrongSize(Outcome::kReturnsFalse, "member", member_values);
}

Verdict CheckSignalProtocol(const char* field, int number, bool is_listed,
                            pb::ProtocolType protocol) {
  std::string reason;
  if (!is_listed) {
    reason = UnlistedText(number, pb::ProtocolType_MIN, pb::ProtocolType_MAX);
  } else if (protocol == pb::L1_PROTO || protocol == pb::L2_PROTO) {
    reason = pb::ProtocolType_Name(protocol) + " (expected a protocol of a state signal)";
  } else {
    return {};
  }
  return {Outcome::kThrows, "protocol.unlisted", field, std::move(reason)};
}

Verdict CheckEnumerations(const pb::IntfEntry& message) {
  return CheckEnumerationsOf<&EnumerationField::in_message>(message, EveryField{});
}

Verdict CheckEnumerations(const IntfEntry& record) {
  return CheckEnumerationsOf<&EnumerationField::in_record>(record, EveryField{});
}

}  // namespace zorl2::check::internal
