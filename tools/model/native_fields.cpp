#include "tools/model/native_fields.h"

#include <fmt/format.h>

#include <cstdint>

#include "convert/enum_serialization.h"
#include "information_client.pb.h"
#include "interface_entry.pb.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using Fields = std::vector<PathValue>;

const char* Flag(bool value) { return value ? "true" : "false"; }

std::string Number(std::uint64_t value) { return fmt::format("{}", value); }

// For enumerations with the same numbers natively and on the wire.
std::string EnumText(const google::protobuf::EnumDescriptor* type, int native) {
  const auto* value = type->FindValueByNumber(native);
  return value == nullptr ? fmt::format("{}", native) : value->name();
}

std::string ProtocolText(ProtocolType native) {
  return fmt::format("{} ({})", NativeProtocolName(native), static_cast<int>(native));
}

}  // namespace

std::string DottedText(const zorid_t& id) {
  return fmt::format("{}.{}.{}.{}", id.octets[0], id.octets[1], id.octets[2], id.octets[3]);
}

std::string NativeProtocolName(int native) {
  const auto type = static_cast<ProtocolType>(native);
  const pb::ProtocolType message = SerializeProtocolType(type);
  if (message == pb::PROTOCOL_UNKNOWN && type != PROTOCOL_UNKNOWN) return fmt::format("{}", native);
  return pb::ProtocolType_Name(message);
}

std::string RateText(std::uint32_t kbps) {
  if (kbps == 0) return "-";
  if (kbps >= 1000000) return fmt::format("{:.7g} Gb/s", kbps / 1e6);
  if (kbps >= 1000) return fmt::format("{:.7g} Mb/s", kbps / 1e3);
  return fmt::format("{} kb/s", kbps);
}

std::vector<PathValue> NativeFields(const zorid_t& id) { return {{"value", DottedText(id)}}; }

std::vector<PathValue> NativeFields(const ::IntfEntry& entry) {
  const ::IntfEntry::GeneralInfo& general = entry.getGeneralInfo();
  const ::IntfEntry::StatusInfo& status = entry.getStatusInfo();
  const ::IntfEntry::PhysicalInfo& physical = entry.getPhysicalInfo();
  const ::IntfEntry::TypeInfo& type = entry.getTypeInfo();
  const ::IntfEntry::InterfaceFlags& flags = type.interfaceFlags;
  Fields fields = {
      {"zorid", DottedText(entry.getId())},
      {"parent", DottedText(entry.getParent())},
      {"generalInfo.intf_name", Quoted(general.intf_name, 60)},
      {"generalInfo.phy_addr", Quoted(general.phy_addr, 60)},
      {"generalInfo.bridge_port_number", Number(general.bridge_port_number)},
      {"generalInfo.redundancy_group_id", Number(general.redundancy_group_id)},
      {"generalInfo.redundancy_group_phy_addr", Quoted(general.redundancy_group_phy_addr, 60)},
      {"statusInfo.adminStatus", EnumText(pb::AdminStatus_descriptor(), status.adminStatus)},
      {"statusInfo.operationalStatus",
       EnumText(pb::OperationalStatus_descriptor(), status.operationalStatus)},
      {"statusInfo.linkStatus", EnumText(pb::LinkStatus_descriptor(), status.linkStatus)},
      {"statusInfo.operationalSpeed", Number(status.operationalSpeed)},
      {"statusInfo.extraShutdown", Flag(status.extraShutdown)},
      {"statusInfo.extraBlocking", Flag(status.extraBlocking)},
      {"statusInfo.configShutdown", Flag(status.configShutdown)},
      {"physicalInfo.intf_mtu", Number(physical.intf_mtu)},
      {"physicalInfo.eth_speed", EnumText(pb::EthernetSpeed_descriptor(), physical.eth_speed)},
      {"physicalInfo.eth_duplex_mode",
       EnumText(pb::EthernetDuplexMode_descriptor(), physical.eth_duplex_mode)},
      {"typeInfo.interfaceType", EnumText(pb::InterfaceType_descriptor(), type.interfaceType)},
      {"typeInfo.interfaceFlags.if_l2_switching", Flag(flags.if_l2_switching)},
      {"typeInfo.interfaceFlags.if_in_bundle", Flag(flags.if_in_bundle)},
      {"typeInfo.interfaceFlags.l2_bundle", Flag(flags.l2_bundle)},
      {"typeInfo.interfaceFlags.l2_sub_if", Flag(flags.l2_sub_if)},
      {"typeInfo.interfaceFlags.point_to_point", Flag(flags.point_to_point)},
      {"typeInfo.interfaceFlags.if_multicast", Flag(flags.if_multicast)},
      {"typeInfo.vlanType", EnumText(pb::VlanType_descriptor(), type.vlanType)},
  };
  int index = 0;
  for (const ProtocolType protocol : entry.getShutdownProtos()) {
    fields.push_back({At("shutdownProtos", index++), ProtocolText(protocol)});
  }
  index = 0;
  for (const ::IntfEntry::BlockInfo& block : entry.getBlockInfo()) {
    const std::string at = At("blockInfo", index++);
    fields.push_back({Join(at, "protocol"), ProtocolText(block.protocol)});
    fields.push_back({Join(at, "state"), EnumText(pb::BlockState_descriptor(), block.state)});
  }
  fields.push_back(
      {"intfCategory", EnumText(pb::InterfaceCategory_descriptor(), entry.getInterfaceCategory())});
  return fields;
}

std::vector<PathValue> NativeFields(const ZORL2InfoClientConfig& config) {
  Fields fields = {{"clientAddress", Number(config.clientAddress)},
                   {"protocolType", ProtocolText(config.protocolType)}};
  const auto* categories = pb::InterfaceCategory_descriptor();
  for (int i = 0; i < categories->value_count(); ++i) {
    const auto category = static_cast<InterfaceCategory>(categories->value(i)->number());
    fields.push_back(
        {Join("intfCategory", categories->value(i)->name()),
         config.interfaceCategories.count(category) != 0 ? "in the set" : "not in it"});
  }
  fields.push_back({"token", Quoted(config.token, 60)});
  return fields;
}

std::vector<PathValue> NativeFields(const LagMemberOperation& operation) {
  return {{"lag", DottedText(operation.lag)},
          {"member", DottedText(operation.member)},
          {"token", Number(operation.token)},
          {"collecting", Flag(operation.collecting)},
          {"distributing", Flag(operation.distributing)}};
}

std::vector<PathValue> NativeFields(const ShutStateInfoSyncSignal& signal) {
  Fields fields = {{"protocol", ProtocolText(signal.protocol)}};
  for (const auto& [id, shut] : signal.shutStates) {
    fields.push_back({DottedText(id), shut ? "shut" : "released"});
  }
  return fields;
}

std::vector<PathValue> NativeFields(const BlockStateInfoSyncSignal& signal) {
  Fields fields = {{"protocol", ProtocolText(signal.protocol)}};
  for (const auto& [id, state] : signal.blockStates) {
    fields.push_back({DottedText(id), EnumText(pb::BlockState_descriptor(), state)});
  }
  return fields;
}

}  // namespace zorl2_inspect
