// What a conversion costs at the least: the same fields moved by hand, without tables, virtual
// calls, tests or exceptions. Enumerations are cast, so that a floor is right for the fixtures
// alone and a converter can be measured against it, never replaced by it. Each floor is a function
// that is called, as a conversion written by hand in a program's own source would be: merged into
// the measuring loop, the smallest would cost less than any call.
#pragma once

#include <cstdint>
#include <list>
#include <utility>

#include "information_client.pb.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "lag.pb.h"
#include "native/info_client_config.h"
#include "native/intf_entry.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
#include "zorid.pb.h"

namespace zorl2_bench {

namespace pb = zorl2::protobuf;

// Clears the message and sets its fields with the public setters.

inline void SetOctets(const zorid_t& id, pb::Zorid& message) {
  for (const std::uint8_t octet : id.octets) message.add_value(octet);
}

[[gnu::noinline]] inline void SetByHand(const zorid_t& id, pb::Zorid& message) {
  message.Clear();
  SetOctets(id, message);
}

inline pb::ProtocolType ProtocolByHand(ProtocolType native) {
  return static_cast<pb::ProtocolType>(native + 1);
}

[[gnu::noinline]] inline void SetByHand(const IntfEntry& entry, pb::IntfEntry& message) {
  message.Clear();
  SetOctets(entry.getId(), *message.mutable_zorid());
  SetOctets(entry.getParent(), *message.mutable_parent());

  const IntfEntry::GeneralInfo& general = entry.getGeneralInfo();
  pb::GeneralInfo& generalMessage = *message.mutable_generalinfo();
  generalMessage.set_intf_name(general.intf_name);
  generalMessage.set_phy_addr(general.phy_addr);
  generalMessage.set_bridge_port_number(general.bridge_port_number);
  generalMessage.set_redundancy_group_id(general.redundancy_group_id);
  generalMessage.set_redundancy_group_phy_addr(general.redundancy_group_phy_addr);

  const IntfEntry::StatusInfo& status = entry.getStatusInfo();
  pb::StatusInfo& statusMessage = *message.mutable_statusinfo();
  statusMessage.set_adminstatus(static_cast<pb::AdminStatus>(status.adminStatus));
  statusMessage.set_operationalstatus(static_cast<pb::OperationalStatus>(status.operationalStatus));
  statusMessage.set_linkstatus(static_cast<pb::LinkStatus>(status.linkStatus));
  statusMessage.set_operationalspeed(status.operationalSpeed);
  statusMessage.set_extrashutdown(status.extraShutdown);
  statusMessage.set_extrablocking(status.extraBlocking);
  statusMessage.set_configshutdown(status.configShutdown);

  const IntfEntry::PhysicalInfo& physical = entry.getPhysicalInfo();
  pb::PhysicalInfo& physicalMessage = *message.mutable_physicalinfo();
  physicalMessage.set_intf_mtu(static_cast<std::uint32_t>(physical.intf_mtu));
  physicalMessage.set_eth_speed(static_cast<pb::EthernetSpeed>(physical.eth_speed));
  physicalMessage.set_eth_duplex_mode(
      static_cast<pb::EthernetDuplexMode>(physical.eth_duplex_mode));

  const IntfEntry::TypeInfo& type = entry.getTypeInfo();
  pb::TypeInfo& typeMessage = *message.mutable_typeinfo();
  typeMessage.set_interfacetype(static_cast<pb::InterfaceType>(type.interfaceType));
  pb::InterfaceFlags& flags = *typeMessage.mutable_interfaceflags();
  flags.set_if_l2_switching(type.interfaceFlags.if_l2_switching);
  flags.set_if_in_bundle(type.interfaceFlags.if_in_bundle);
  flags.set_l2_bundle(type.interfaceFlags.l2_bundle);
  flags.set_l2_sub_if(type.interfaceFlags.l2_sub_if);
  flags.set_point_to_point(type.interfaceFlags.point_to_point);
  flags.set_if_multicast(type.interfaceFlags.if_multicast);
  typeMessage.set_vlantype(static_cast<pb::VlanType>(type.vlanType));

  for (const ProtocolType protocol : entry.getShutdownProtos()) {
    message.add_shutdownprotos(ProtocolByHand(protocol));
  }
  for (const IntfEntry::BlockInfo& block : entry.getBlockInfo()) {
    pb::BlockInfo& blockMessage = *message.add_blockinfo();
    blockMessage.set_protocol(ProtocolByHand(block.protocol));
    blockMessage.set_state(static_cast<pb::BlockState>(block.state));
  }
  message.set_intfcategory(static_cast<pb::InterfaceCategory>(entry.getInterfaceCategory()));
}

[[gnu::noinline]] inline void SetByHand(const ShutStateInfoSyncSignal& signal,
                                        pb::ShutStateSync& message) {
  message.Clear();
  message.set_shutprotocol(ProtocolByHand(signal.protocol));
  for (const auto& [id, state] : signal.shutStates) {
    pb::ShutStateInfo& info = *message.add_intfs();
    SetOctets(id, *info.mutable_zorid());
    info.set_state(state);
  }
}

[[gnu::noinline]] inline void SetByHand(const BlockStateInfoSyncSignal& signal,
                                        pb::BlockStateSync& message) {
  message.Clear();
  message.set_blockprotocol(ProtocolByHand(signal.protocol));
  for (const auto& [id, state] : signal.blockStates) {
    pb::BlockStateInfo& info = *message.add_intfs();
    SetOctets(id, *info.mutable_zorid());
    info.set_state(static_cast<pb::BlockState>(state));
  }
}

[[gnu::noinline]] inline void SetByHand(const ZORL2InfoClientConfig& config,
                                        pb::InformationClient& message) {
  message.Clear();
  message.set_clientaddress(config.clientAddress);
  message.set_protocoltype(ProtocolByHand(config.protocolType));
  pb::IntfCategory& flags = *message.mutable_intfcategory();
  flags.set_l1(config.interfaceCategories.count(L1) != 0);
  flags.set_l2(config.interfaceCategories.count(L2) != 0);
  flags.set_vp(config.interfaceCategories.count(VP) != 0);
  flags.set_l2_sub_if(config.interfaceCategories.count(L2_SUB_IF) != 0);
  flags.set_virtual_if(config.interfaceCategories.count(VIRTUAL_IF) != 0);
  message.set_token(config.token);
}

[[gnu::noinline]] inline void SetByHand(const LagMemberOperation& operation,
                                        pb::LagMemberOperationProto& message) {
  message.Clear();
  SetOctets(operation.lag, *message.mutable_lag());
  SetOctets(operation.member, *message.mutable_member());
  message.set_token(operation.token);
  message.set_collecting(operation.collecting);
  message.set_distributing(operation.distributing);
}

// Reads the message with its getters.

inline void GetOctets(const pb::Zorid& message, zorid_t& id) {
  for (int i = 0; i < 4; ++i) id.octets[i] = static_cast<std::uint8_t>(message.value(i));
}

[[gnu::noinline]] inline void GetByHand(const pb::Zorid& message, zorid_t& id) {
  GetOctets(message, id);
}

inline ProtocolType ProtocolByHand(pb::ProtocolType message) {
  return static_cast<ProtocolType>(message - 1);
}

// The members of IntfEntry, which nobody but its builder may write.
struct PlainEntry {
  zorid_t id;
  zorid_t parent;
  IntfEntry::GeneralInfo general;
  IntfEntry::StatusInfo status;
  IntfEntry::PhysicalInfo physical;
  IntfEntry::TypeInfo type;
  InterfaceCategory category = L1;
  std::list<ProtocolType> shutdownProtos;
  std::list<IntfEntry::BlockInfo> blockInfo;
};

// Into fresh strings and lists, moved into place at the end.
[[gnu::noinline]] inline void GetByHand(const pb::IntfEntry& message, PlainEntry& entry) {
  PlainEntry fresh;
  GetOctets(message.zorid(), fresh.id);
  GetOctets(message.parent(), fresh.parent);

  const pb::GeneralInfo& general = message.generalinfo();
  fresh.general.intf_name = general.intf_name();
  fresh.general.phy_addr = general.phy_addr();
  fresh.general.bridge_port_number = static_cast<std::uint16_t>(general.bridge_port_number());
  fresh.general.redundancy_group_id = general.redundancy_group_id();
  fresh.general.redundancy_group_phy_addr = general.redundancy_group_phy_addr();

  const pb::StatusInfo& status = message.statusinfo();
  fresh.status.adminStatus = static_cast<IntfEntry::AdminStatus>(status.adminstatus());
  fresh.status.operationalStatus =
      static_cast<IntfEntry::OperationalStatus>(status.operationalstatus());
  fresh.status.linkStatus = static_cast<IntfEntry::LinkStatus>(status.linkstatus());
  fresh.status.operationalSpeed = status.operationalspeed();
  fresh.status.extraShutdown = status.extrashutdown();
  fresh.status.extraBlocking = status.extrablocking();
  fresh.status.configShutdown = status.configshutdown();

  const pb::PhysicalInfo& physical = message.physicalinfo();
  fresh.physical.intf_mtu = physical.intf_mtu();
  fresh.physical.eth_speed = static_cast<IntfEntry::EthernetSpeed>(physical.eth_speed());
  fresh.physical.eth_duplex_mode =
      static_cast<IntfEntry::EthernetDuplexMode>(physical.eth_duplex_mode());

  const pb::TypeInfo& type = message.typeinfo();
  fresh.type.interfaceType = static_cast<IntfEntry::InterfaceType>(type.interfacetype());
  const pb::InterfaceFlags& flags = type.interfaceflags();
  fresh.type.interfaceFlags = {flags.if_l2_switching(), flags.if_in_bundle(),
                               flags.l2_bundle(),       flags.l2_sub_if(),
                               flags.point_to_point(),  flags.if_multicast()};
  fresh.type.vlanType = static_cast<IntfEntry::VlanType>(type.vlantype());

  for (int i = 0; i < message.shutdownprotos_size(); ++i) {
    fresh.shutdownProtos.push_back(ProtocolByHand(message.shutdownprotos(i)));
  }
  for (const pb::BlockInfo& block : message.blockinfo()) {
    fresh.blockInfo.push_back(
        {ProtocolByHand(block.protocol()), static_cast<BlockState>(block.state())});
  }
  fresh.category = static_cast<InterfaceCategory>(message.intfcategory());
  entry = std::move(fresh);
}

[[gnu::noinline]] inline void GetByHand(const pb::InformationClient& message,
                                        ZORL2InfoClientConfig& config) {
  config.clientAddress = message.clientaddress();
  config.protocolType = ProtocolByHand(message.protocoltype());
  const pb::IntfCategory& flags = message.intfcategory();
  if (flags.l1()) config.interfaceCategories.insert(L1);
  if (flags.l2()) config.interfaceCategories.insert(L2);
  if (flags.vp()) config.interfaceCategories.insert(VP);
  if (flags.l2_sub_if()) config.interfaceCategories.insert(L2_SUB_IF);
  if (flags.virtual_if()) config.interfaceCategories.insert(VIRTUAL_IF);
  config.token = message.token();
}

[[gnu::noinline]] inline void GetByHand(const pb::LagMemberOperationProto& message,
                                        LagMemberOperation& operation) {
  GetOctets(message.lag(), operation.lag);
  GetOctets(message.member(), operation.member);
  operation.token = message.token();
  operation.collecting = message.collecting();
  operation.distributing = message.distributing();
}

}  // namespace zorl2_bench
