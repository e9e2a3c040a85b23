#include "convert/intf_entry_mapping.h"

#include <cstdint>

#include "convert/enum_serialization.h"
#include "convert/intf_entry_enum_tables.h"
#include "convert/nested_message.h"

namespace pb = zorl2::protobuf;

namespace zorl2_mapping {

void ToNative(const pb::GeneralInfo& message, IntfEntry::GeneralInfo& native) {
  native.intf_name = message.intf_name();
  native.phy_addr = message.phy_addr();
  // The only optional field: without it the record keeps the number it had. The record holds 16
  // bits, so the upper 16 of the message are dropped without a check.
  if (message.has_bridge_port_number()) {
    native.bridge_port_number = static_cast<std::uint16_t>(message.bridge_port_number());
  }
  native.redundancy_group_id = message.redundancy_group_id();
  native.redundancy_group_phy_addr = message.redundancy_group_phy_addr();
}

void ToMessage(const IntfEntry::GeneralInfo& native, pb::GeneralInfo& message) {
  message.set_intf_name(native.intf_name);
  message.set_phy_addr(native.phy_addr);
  // Always present: the record has no way to say that there is none.
  message.set_bridge_port_number(native.bridge_port_number);
  message.set_redundancy_group_id(native.redundancy_group_id);
  message.set_redundancy_group_phy_addr(native.redundancy_group_phy_addr);
}

void ToNative(const pb::StatusInfo& message, IntfEntry::StatusInfo& native) {
  native.adminStatus = AdminStatusTable::ToNative(message.adminstatus());
  native.operationalStatus = OperationalStatusTable::ToNative(message.operationalstatus());
  native.linkStatus = LinkStatusTable::ToNative(message.linkstatus());
  native.operationalSpeed = message.operationalspeed();
  native.extraShutdown = message.extrashutdown();
  native.extraBlocking = message.extrablocking();
  native.configShutdown = message.configshutdown();
}

void ToMessage(const IntfEntry::StatusInfo& native, pb::StatusInfo& message) {
  // All three are translated before the first is set: a status that cannot be translated leaves
  // this message untouched, unlike the physical and type information below.
  const pb::AdminStatus adminStatus = AdminStatusTable::ToMessage(native.adminStatus);
  const pb::OperationalStatus operationalStatus =
      OperationalStatusTable::ToMessage(native.operationalStatus);
  const pb::LinkStatus linkStatus = LinkStatusTable::ToMessage(native.linkStatus);
  message.set_adminstatus(adminStatus);
  message.set_operationalstatus(operationalStatus);
  message.set_linkstatus(linkStatus);
  message.set_operationalspeed(native.operationalSpeed);
  message.set_extrashutdown(native.extraShutdown);
  message.set_extrablocking(native.extraBlocking);
  message.set_configshutdown(native.configShutdown);
}

void ToNative(const pb::PhysicalInfo& message, IntfEntry::PhysicalInfo& native) {
  native.intf_mtu = message.intf_mtu();
  native.eth_speed = EthernetSpeedTable::ToNative(message.eth_speed());
  native.eth_duplex_mode = DuplexModeTable::ToNative(message.eth_duplex_mode());
}

void ToMessage(const IntfEntry::PhysicalInfo& native, pb::PhysicalInfo& message) {
  // The message holds 32 bits, so the upper 32 of the record are dropped without a check.
  message.set_intf_mtu(static_cast<std::uint32_t>(native.intf_mtu));
  message.set_eth_speed(EthernetSpeedTable::ToMessage(native.eth_speed));
  message.set_eth_duplex_mode(DuplexModeTable::ToMessage(native.eth_duplex_mode));
}

void ToNative(const pb::InterfaceFlags& message, IntfEntry::InterfaceFlags& native) {
  native.if_l2_switching = message.if_l2_switching();
  native.if_in_bundle = message.if_in_bundle();
  native.l2_bundle = message.l2_bundle();
  native.l2_sub_if = message.l2_sub_if();
  native.point_to_point = message.point_to_point();
  native.if_multicast = message.if_multicast();
}

void ToMessage(const IntfEntry::InterfaceFlags& native, pb::InterfaceFlags& message) {
  message.set_if_l2_switching(native.if_l2_switching);
  message.set_if_in_bundle(native.if_in_bundle);
  message.set_l2_bundle(native.l2_bundle);
  message.set_l2_sub_if(native.l2_sub_if);
  message.set_point_to_point(native.point_to_point);
  message.set_if_multicast(native.if_multicast);
}

void ToNative(const pb::TypeInfo& message, IntfEntry::TypeInfo& native) {
  native.interfaceType = InterfaceTypeTable::ToNative(message.interfacetype());
  ToNative(message.interfaceflags(), native.interfaceFlags);
  native.vlanType = VlanTypeTable::ToNative(message.vlantype());
}

void ToMessage(const IntfEntry::TypeInfo& native, pb::TypeInfo& message) {
  message.set_interfacetype(InterfaceTypeTable::ToMessage(native.interfaceType));
  // The flags are replaced as a whole: nothing that the nested message held survives, unknown
  // fields included.
  pb::InterfaceFlags& flags = ZORL2_NESTED(message, interfaceflags);
  flags.Clear();
  ToMessage(native.interfaceFlags, flags);
  message.set_vlantype(VlanTypeTable::ToMessage(native.vlanType));
}

void ToNative(const pb::BlockInfo& message, IntfEntry::BlockInfo& native) {
  native.protocol = DeserializeProtocolType(message.protocol());
  native.state = DeserializeBlockState(message.state());
}

void ToMessage(const IntfEntry::BlockInfo& native, pb::BlockInfo& message) {
  message.set_protocol(SerializeProtocolType(native.protocol));
  message.set_state(SerializeBlockState(native.state));
}

}  // namespace zorl2_mapping
