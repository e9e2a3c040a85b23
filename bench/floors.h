// Copies the fields of an entry by hand, without tables, virtual calls, tests or exceptions. The
// conversion is compared with this. It casts enumerations, so it is right only for the fixtures.
// Not inlined, as the function of a program would be.
#pragma once

#include <cstdint>
#include <list>
#include <utility>

#include "interface_entry.pb.h"
#include "native/intf_entry.h"

namespace zorl2_bench {

namespace pb = zorl2::protobuf;

inline void GetOctets(const pb::Zorid& message, zorid_t& id) {
  for (int i = 0; i < 4; ++i) id.octets[i] = static_cast<std::uint8_t>(message.value(i));
}

inline ProtocolType ProtocolByHand(pb::ProtocolType message) {
  return static_cast<ProtocolType>(message - 1);
}

// The members of IntfEntry, which only its builder may write.
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

// Copies into fresh strings and lists and moves them into place at the end.
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

}  // namespace zorl2_bench
