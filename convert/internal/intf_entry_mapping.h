// Not installed. The field mapping of the records nested in an interface entry, in both directions.
// Inline, because a call for each part costs as much as the part. The helper classes add the
// initialisation test that their callers are promised; the entry's converter tests the whole
// message once and calls these functions directly.
//
// ToNative reads an initialised message. ToMessage sets every field and clears none first. In both,
// an unlisted value throws, and the fields before it remain written.
#pragma once

#include <cstdint>

#include "convert/internal/enum_tables.h"
#include "convert/internal/nested_message.h"
#include "convert/internal/protocol_mapping.h"
#include "interface_entry.pb.h"
#include "native/intf_entry.h"

namespace zorl2_mapping {

inline void ToNative(const zorl2::protobuf::GeneralInfo& message, IntfEntry::GeneralInfo& native) {
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

inline void ToMessage(const IntfEntry::GeneralInfo& native, zorl2::protobuf::GeneralInfo& message) {
  message.set_intf_name(native.intf_name);
  message.set_phy_addr(native.phy_addr);
  // Always present, because the record cannot express an absent number.
  message.set_bridge_port_number(native.bridge_port_number);
  message.set_redundancy_group_id(native.redundancy_group_id);
  message.set_redundancy_group_phy_addr(native.redundancy_group_phy_addr);
}

inline void ToNative(const zorl2::protobuf::StatusInfo& message, IntfEntry::StatusInfo& native) {
  native.adminStatus = AdminStatusTable::ToNative(message.adminstatus());
  native.operationalStatus = OperationalStatusTable::ToNative(message.operationalstatus());
  native.linkStatus = LinkStatusTable::ToNative(message.linkstatus());
  native.operationalSpeed = message.operationalspeed();
  native.extraShutdown = message.extrashutdown();
  native.extraBlocking = message.extrablocking();
  native.configShutdown = message.configshutdown();
}

inline void ToMessage(const IntfEntry::StatusInfo& native, zorl2::protobuf::StatusInfo& message) {
  // Translates all three states before it sets the first: unlike the physical and type information
  // below, the message remains unchanged after an unlisted state.
  const zorl2::protobuf::AdminStatus adminStatus = AdminStatusTable::ToMessage(native.adminStatus);
  const zorl2::protobuf::OperationalStatus operationalStatus =
      OperationalStatusTable::ToMessage(native.operationalStatus);
  const zorl2::protobuf::LinkStatus linkStatus = LinkStatusTable::ToMessage(native.linkStatus);
  message.set_adminstatus(adminStatus);
  message.set_operationalstatus(operationalStatus);
  message.set_linkstatus(linkStatus);
  message.set_operationalspeed(native.operationalSpeed);
  message.set_extrashutdown(native.extraShutdown);
  message.set_extrablocking(native.extraBlocking);
  message.set_configshutdown(native.configShutdown);
}

inline void ToNative(const zorl2::protobuf::PhysicalInfo& message,
                     IntfEntry::PhysicalInfo& native) {
  native.intf_mtu = message.intf_mtu();
  native.eth_speed = EthernetSpeedTable::ToNative(message.eth_speed());
  native.eth_duplex_mode = DuplexModeTable::ToNative(message.eth_duplex_mode());
}

inline void ToMessage(const IntfEntry::PhysicalInfo& native,
                      zorl2::protobuf::PhysicalInfo& message) {
  // The message holds 32 bits, so the upper 32 of the record are dropped without a check.
  message.set_intf_mtu(static_cast<std::uint32_t>(native.intf_mtu));
  message.set_eth_speed(EthernetSpeedTable::ToMessage(native.eth_speed));
  message.set_eth_duplex_mode(DuplexModeTable::ToMessage(native.eth_duplex_mode));
}

inline void ToNative(const zorl2::protobuf::InterfaceFlags& message,
                     IntfEntry::InterfaceFlags& native) {
  native.if_l2_switching = message.if_l2_switching();
  native.if_in_bundle = message.if_in_bundle();
  native.l2_bundle = message.l2_bundle();
  native.l2_sub_if = message.l2_sub_if();
  native.point_to_point = message.point_to_point();
  native.if_multicast = message.if_multicast();
}

inline void ToMessage(const IntfEntry::InterfaceFlags& native,
                      zorl2::protobuf::InterfaceFlags& message) {
  message.set_if_l2_switching(native.if_l2_switching);
  message.set_if_in_bundle(native.if_in_bundle);
  message.set_l2_bundle(native.l2_bundle);
  message.set_l2_sub_if(native.l2_sub_if);
  message.set_point_to_point(native.point_to_point);
  message.set_if_multicast(native.if_multicast);
}

inline void ToNative(const zorl2::protobuf::TypeInfo& message, IntfEntry::TypeInfo& native) {
  native.interfaceType = InterfaceTypeTable::ToNative(message.interfacetype());
  ToNative(message.interfaceflags(), native.interfaceFlags);
  native.vlanType = VlanTypeTable::ToNative(message.vlantype());
}

inline void ToMessage(const IntfEntry::TypeInfo& native, zorl2::protobuf::TypeInfo& message) {
  message.set_interfacetype(InterfaceTypeTable::ToMessage(native.interfaceType));
  // Replaces the flags as a whole, including their unknown fields.
  zorl2::protobuf::InterfaceFlags& flags = ZORL2_NESTED(message, interfaceflags);
  flags.Clear();
  ToMessage(native.interfaceFlags, flags);
  message.set_vlantype(VlanTypeTable::ToMessage(native.vlanType));
}

inline void ToNative(const zorl2::protobuf::BlockInfo& message, IntfEntry::BlockInfo& native) {
  native.protocol = ToNative(message.protocol());
  native.state = ToNative(message.state());
}

inline void ToMessage(const IntfEntry::BlockInfo& native, zorl2::protobuf::BlockInfo& message) {
  message.set_protocol(ToMessage(native.protocol));
  message.set_state(ToMessage(native.state));
}

}  // namespace zorl2_mapping
