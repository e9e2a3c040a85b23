#include "tests/reliability/generate.h"

namespace proof {

zorid_t Generator::NativeZorid() {
  zorid_t id;
  for (std::uint8_t& octet : id.octets) {
    octet = static_cast<std::uint8_t>(Chance(80) ? Below(2) * 128 : Below(256));
  }
  return id;
}

IntfEntry::GeneralInfo Generator::NativeGeneral() {
  IntfEntry::GeneralInfo r;
  r.intf_name = Text();
  r.phy_addr = Text();
  r.bridge_port_number = static_cast<std::uint16_t>(Number32());
  r.redundancy_group_id = Number32();
  r.redundancy_group_phy_addr = Text();
  return r;
}

IntfEntry::StatusInfo Generator::NativeStatus() {
  IntfEntry::StatusInfo r;
  r.adminStatus = static_cast<IntfEntry::AdminStatus>(Enumeration(1));
  r.operationalStatus = static_cast<IntfEntry::OperationalStatus>(Enumeration(1));
  r.linkStatus = static_cast<IntfEntry::LinkStatus>(Enumeration(1));
  r.operationalSpeed = Number32();
  r.extraShutdown = Flag();
  r.extraBlocking = Flag();
  r.configShutdown = Flag();
  return r;
}

IntfEntry::PhysicalInfo Generator::NativePhysical() {
  IntfEntry::PhysicalInfo r;
  r.intf_mtu = Number64();
  r.eth_speed = static_cast<IntfEntry::EthernetSpeed>(Enumeration(11));
  r.eth_duplex_mode = static_cast<IntfEntry::EthernetDuplexMode>(Enumeration(2));
  return r;
}

IntfEntry::InterfaceFlags Generator::NativeFlags() {
  IntfEntry::InterfaceFlags r;
  r.if_l2_switching = Flag();
  r.if_in_bundle = Flag();
  r.l2_bundle = Flag();
  r.l2_sub_if = Flag();
  r.point_to_point = Flag();
  r.if_multicast = Flag();
  return r;
}

IntfEntry::TypeInfo Generator::NativeType() {
  IntfEntry::TypeInfo r;
  r.interfaceType = static_cast<IntfEntry::InterfaceType>(Enumeration(4));
  r.interfaceFlags = NativeFlags();
  r.vlanType = static_cast<IntfEntry::VlanType>(Enumeration(4));
  return r;
}

IntfEntry::BlockInfo Generator::NativeBlock() {
  IntfEntry::BlockInfo r;
  r.protocol = static_cast<ProtocolType>(Enumeration(12));
  r.state = static_cast<BlockState>(Enumeration(1));
  return r;
}

oracle::EntryRecord Generator::NativeEntry() {
  oracle::EntryRecord r;
  r.id = NativeZorid();
  r.parent = NativeZorid();
  r.generalInfo = NativeGeneral();
  r.statusInfo = NativeStatus();
  r.physicalInfo = NativePhysical();
  r.typeInfo = NativeType();
  r.interfaceCategory = static_cast<InterfaceCategory>(Enumeration(4));
  for (std::size_t i = Length(); i > 0; --i) {
    r.shutdownProtos.push_back(static_cast<ProtocolType>(Enumeration(12)));
  }
  for (std::size_t i = Length(); i > 0; --i) r.blockInfo.push_back(NativeBlock());
  return r;
}

ShutStateInfoSyncSignal Generator::NativeShut() {
  ShutStateInfoSyncSignal r;
  r.protocol = static_cast<ProtocolType>(Enumeration(12));
  for (std::size_t i = Length(); i > 0; --i) r.shutStates[NativeZorid()] = Flag();
  return r;
}

BlockStateInfoSyncSignal Generator::NativeBlockSignal() {
  BlockStateInfoSyncSignal r;
  r.protocol = static_cast<ProtocolType>(Enumeration(12));
  for (std::size_t i = Length(); i > 0; --i) {
    r.blockStates[NativeZorid()] = static_cast<BlockState>(Enumeration(1));
  }
  return r;
}

ZORL2InfoClientConfig Generator::NativeClient() {
  ZORL2InfoClientConfig r;
  r.protocolType = static_cast<ProtocolType>(Enumeration(12));
  for (std::size_t i = Length(); i > 0; --i) {
    r.interfaceCategories.insert(static_cast<InterfaceCategory>(Enumeration(4)));
  }
  r.clientAddress = Number64();
  r.token = Text();
  return r;
}

LagMemberOperation Generator::NativeLag() {
  LagMemberOperation r;
  r.lag = NativeZorid();
  r.member = NativeZorid();
  r.token = Number64();
  r.managerData = Number32();
  r.collecting = Flag();
  r.distributing = Flag();
  return r;
}

}  // namespace proof
